#include "cli/ManPage.h"

#include "cli/HelpText.h"
#include "cli/ManTopics.h"
#include "cli/OptionTable.h"

namespace {

QString bold(const QString &text)
{
    return QStringLiteral("\\fB") + ManPage::escaped(text) + QStringLiteral("\\fR");
}

QString italic(const QString &text)
{
    return QStringLiteral("\\fI") + ManPage::escaped(text) + QStringLiteral("\\fR");
}

QString section(const char *title)
{
    return QStringLiteral(".SH ") + QLatin1String(title) + QLatin1Char('\n');
}

QString paragraph(const QString &text)
{
    return ManPage::escaped(text) + QLatin1Char('\n');
}

/// Line ends stay where they are: the help of an option may be a list.
QString lines(const QString &text)
{
    return ManPage::escaped(text).replace(QLatin1Char('\n'), QLatin1String("\n.br\n"))
        + QLatin1Char('\n');
}

QString synopsis()
{
    QStringList calls;
    for (const QString &call : HelpText::synopsis()) {
        const int blank = call.indexOf(QLatin1Char(' '));
        calls += bold(call.left(blank)) + ManPage::escaped(call.mid(blank));
    }
    return calls.join(QStringLiteral("\n.br\n")) + QLatin1Char('\n');
}

QString entry(const OptionTable::Option &option)
{
    QStringList forms;
    for (const QString &form : option.forms())
        forms += bold(form);
    QString head = forms.join(QStringLiteral(", "));
    if (option.takesValue())
        head += QLatin1Char(' ') + italic(QLatin1String(option.valueName));
    return QStringLiteral(".TP\n") + head + QLatin1Char('\n') + lines(option.wholeHelp());
}

QString entries(const QVector<ManTopics::Entry> &list)
{
    QString text;
    for (const ManTopics::Entry &item : list)
        text +=
            QStringLiteral(".TP\n") + bold(item.term) + QLatin1Char('\n') + paragraph(item.text);
    return text;
}

} // namespace

QString ManPage::escaped(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\e"));
    // A bare one may be shown as a hyphen, which nobody can paste into a shell.
    text.replace(QLatin1Char('-'), QLatin1String("\\-"));
    // As are these, which become typographic marks.
    text.replace(QLatin1Char('\''), QLatin1String("\\(aq"));
    text.replace(QLatin1Char('^'), QLatin1String("\\(ha"));
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString &line : lines) {
        if (line.startsWith(QLatin1Char('.')))
            line.prepend(QLatin1String("\\&"));
    }
    return lines.join(QLatin1Char('\n'));
}

QString ManPage::text(const QString &version)
{
    QString text = QStringLiteral(".TH SARVIK\\-CLI 1 \"\" \"sarvik %1\"\n").arg(escaped(version));
    // Option names and values are not to be divided, nor gaps put between them.
    text += QStringLiteral(".nh\n.ad l\n");
    text += section("NAME");
    text +=
        QStringLiteral("sarvik\\-cli \\- search text files in Japanese and Unicode encodings\n");
    text += section("SYNOPSIS") + synopsis();
    text += section("DESCRIPTION") + paragraph(HelpText::description());
    text += section("OPTIONS");
    for (const OptionTable::Option &option : OptionTable::all())
        text += entry(option);
    text += section("KEYWORDS") + paragraph(ManTopics::keywords());
    text += section("MASKS") + paragraph(ManTopics::masks());
    text += section("EXAMPLES") + entries(ManTopics::examples());
    text += section("FILES") + entries(ManTopics::files());
    text += section("NOTES") + paragraph(HelpText::passedOver());
    text += section("EXIT STATUS") + paragraph(HelpText::exitStatus());
    return text;
}
