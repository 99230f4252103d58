#pragma once

#include <QObject>
#include <QStringList>

QT_BEGIN_NAMESPACE
class QDropEvent;
class QLineEdit;
QT_END_NAMESPACE

/// Keeps the line ends of what is pasted into a line edit or dropped on it out of the
/// field. It would draw them as blanks, and nothing in a file matches them. A text that
/// is set by the program stays as it is.
///
/// User interface thread only.
class PastedLine : public QObject {
    Q_OBJECT

public:
    /// Belongs to field.
    explicit PastedLine(QLineEdit *field);

    /// The first line of text that is not empty, without its end.
    static QString firstLine(const QString &text);
    /// Those of texts that are one line.
    static QStringList singleLines(const QStringList &texts);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void correct();
    bool isFreshPaste(const QString &pasted) const;
    bool drop(QDropEvent &event);

    QLineEdit *const m_field;
    /// In the text before the last change.
    int m_lineEnds = 0;
};
