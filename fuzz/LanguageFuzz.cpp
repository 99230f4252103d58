#include "fuzz/FuzzInput.h"
#include "fuzz/FuzzedLanguage.h"
#include "view/HighlightSyntax.h"
#include "view/LanguageConfig.h"
#include "view/LanguagePattern.h"

#include <QVector>

#include <tuple>

namespace {

using Match = std::tuple<int, int, int>;

QVector<Match> matchesOf(const HighlightRules &rules, const QString &text)
{
    QVector<Match> matches;
    rules.visitMatches(text, HighlightRules::Group::Language, text.size() + 1,
                       [&](int start, int length, HighlightColour colour) {
                           matches.append({start, length, int(colour)});
                       });
    return matches;
}

/// Words are looked up in one walk; that must find what their patterns find.
void compareWords(const QStringList &words, const QStringList &lines)
{
    HighlightRules fast;
    HighlightRules plain;
    for (int i = 0; i < words.size(); ++i) {
        const QString name = QStringLiteral("word_%1").arg(i);
        const QString boundary = QStringLiteral("\\b");
        fast.setWord(name, words.at(i), HighlightColour::Keyword);
        plain.set(name, LanguagePattern::compiled(boundary + words.at(i) + boundary),
                  HighlightColour::Keyword);
    }
    for (const QString &line : lines)
        require(matchesOf(fast, line) == matchesOf(plain, line), "words match as their patterns");
}

void colour(const HighlightSyntax &syntax, const QStringList &lines)
{
    CommentScanner::OpenComments open;
    for (const QString &line : lines) {
        HighlightSyntax::Line asked{line};
        asked.openBefore = open.count();
        const auto visitor = [&line](int start, int length, HighlightColour) {
            require(start >= 0 && length > 0 && start + length <= line.size(),
                    "a colour lies in its line");
        };
        const TextSpan comment = syntax.visitColours(asked, visitor);
        require(comment.end <= line.size(), "a comment lies in its line");
        syntax.comments().blockComments(line, open);
        require(open.before >= 0 && open.here >= 0, "no more comments close than were open");
        open = {open.count(), 0};
    }
}

} // namespace

/// Any bytes as a language definition, and a text in its colours. A line "%%"
/// stands between the two.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    const QByteArray all = input.rest();
    const int end = all.indexOf("\n%%\n");
    const QByteArray definitionBytes = all.left(end < 0 ? all.size() : end + 1);
    QByteArray text = end < 0 ? QByteArray("int i = 0; // x") : all.mid(end + 4);
    text.truncate(affordableText(definitionBytes));
    FuzzedLanguage::define(definitionBytes);
    const QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'));

    HighlightSyntax syntax(false);
    syntax.setLanguage(QStringLiteral("x"), FuzzedLanguage::name());
    const LanguageConfig::Definition definition =
        LanguageConfig::instance().definition(QString(), FuzzedLanguage::name());
    require(definition != nullptr, "any bytes are a definition");
    colour(syntax, lines);
    compareWords(definition->wordKeywords + definition->wordReserve, lines);
    return 0;
}
