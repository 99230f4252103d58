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

} // namespace

QString patternError(const QString &keyword)
{
    if (!PatternLimits::isReasonable(keyword))
        return QStringLiteral("パターンが複雑すぎます");
    const QRegExp pattern(keyword);
    if (pattern.isValid())
        return QString();
    return QStringLiteral("正規表現として正しくありません: %1").arg(pattern.errorString());
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
