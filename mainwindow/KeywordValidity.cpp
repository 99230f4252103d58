#include "mainwindow/KeywordValidity.h"

#include "engine/PatternLimits.h"

#include <QLineEdit>
#include <QRegExp>

namespace KeywordValidity {

namespace {

/// The background with red in it, so that the text stays readable on a dark one
/// and on a light one.
QColor reddened(const QColor &background)
{
    const auto mixed = [](int own, int red) {
        return (own * 3 + red * 2) / 5;
    };
    return QColor(mixed(background.red(), 255), mixed(background.green(), 0),
                  mixed(background.blue(), 0));
}

struct Reason {
    const char *toolkits;
    const char *japanese;
};

// What QRegExp says is English and meant for programmers.
constexpr Reason kReasons[] = {
    {"unexpected end", "途中で終わっています。閉じていない括弧か、最後に余分な \\ があります"},
    {"bad repetition syntax", "繰り返しの記号 * + ? { } の使い方が正しくありません"},
    {"bad lookahead syntax", "(? で始められるのは、(?: ) (?= ) (?! ) だけです"},
    {"lookbehinds not supported, see QTBUG-2371", "(?< で始まる書き方（後読みなど）は使えません"},
    {"missing left delim", "閉じ括弧に対応する開き括弧がありません"},
    {"invalid interval", "{ } の繰り返しの回数が、大きい数から小さい数になっています"},
    {"invalid octal value", "\\0 の後の８進数が 377 を超えています"},
    {"bad char class syntax", "[ ] の中の書き方が正しくありません"},
    {"invalid category", "文字の種類の名前が正しくありません"},
    {"disabled feature used", "使えない書き方があります"},
    {"met internal limit", "パターンが大きすぎます"},
};

QString reason(const QString &toolkits)
{
    for (const Reason &known : kReasons) {
        if (toolkits == QLatin1String(known.toolkits))
            return QString::fromUtf8(known.japanese);
    }
    return toolkits;
}

} // namespace

QString patternError(const QString &keyword)
{
    if (!PatternLimits::isReasonable(keyword))
        return QStringLiteral("パターンが複雑すぎます");
    const QRegExp pattern(keyword);
    if (pattern.isValid())
        return QString();
    return QStringLiteral("正規表現として正しくありません: %1").arg(reason(pattern.errorString()));
}

QString backgroundSheet(const QColor &colour)
{
    return QStringLiteral("QLineEdit{background-color:") + colour.name() + QStringLiteral(";}");
}

void show(QLineEdit *field, const Look &look)
{
    const QString error = look.regexp ? patternError(field->text()) : QString();
    const QString sheet =
        backgroundSheet(error.isEmpty() ? look.background : reddened(look.background));
    // A new sheet polishes the widget anew, which no key press should pay for.
    if (field->styleSheet() != sheet)
        field->setStyleSheet(sheet);
    field->setToolTip(error);
}

} // namespace KeywordValidity
