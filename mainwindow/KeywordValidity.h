#pragma once

#include <QColor>
#include <QString>

QT_BEGIN_NAMESPACE
class QLineEdit;
QT_END_NAMESPACE

/// Tells while a keyword is typed that it is no valid pattern. The search itself
/// says nothing: an invalid pattern finds nothing.
namespace KeywordValidity {

struct Look {
    QColor background; ///< of a keyword that can be searched
    bool regexp = false; ///< keywords are patterns
};

/// What is wrong with keyword as a pattern, for the user; empty when nothing is.
QString patternError(const QString &keyword);

/// The style sheet that gives a line edit this background.
QString backgroundSheet(const QColor &colour);

/// Sets the field's background and, for an invalid pattern, its tool tip.
void show(QLineEdit *field, const Look &look);

} // namespace KeywordValidity
