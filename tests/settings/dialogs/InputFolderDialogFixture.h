#pragma once

#include "settings/dialogs/InputFolderDialog.h"
#include "settings/dialogs/TableView.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include <memory>

/// What the tests of the input dialog share.
namespace InputFolderDialogFixture {

inline const QString kPurpose = QStringLiteral("SearchPath");
inline const QString kName = QStringLiteral("inputSearchPath.ini");
inline const QString kTitle = QStringLiteral("追加する検索パス");

inline QStringList list(const char *texts)
{
    return QString::fromUtf8(texts).split(QLatin1Char('|'));
}

/// The dialog on the screen, over a history file of its own.
class Shown {
public:
    /// history is what stands after "list="; head goes before it.
    explicit Shown(const QByteArray &history = QByteArray(), const QString &text = QString(),
                   const QByteArray &head = QByteArray())
    {
        if (!history.isEmpty() || !head.isEmpty())
            folder.write(kName, head + "[history]\nlist=" + history + '\n');
        dialog = std::make_unique<InputFolderDialog>(text, kTitle, kPurpose, folder.path());
        tester = std::make_unique<QAbstractItemModelTester>(
            table()->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        dialog->show();
        dialog->activateWindow();
        if (!QTest::qWaitForWindowActive(dialog.get(), kPatienceMilliseconds))
            qFatal("the dialog is not on the screen");
    }

    template <typename Widget> Widget *child(const char *name) const
    {
        auto *widget = dialog->findChild<Widget *>(QLatin1String(name));
        if (!widget)
            qFatal("no widget %s", name);
        return widget;
    }
    QLineEdit *field() const { return child<QLineEdit>("lineEdit"); }
    TableView *table() const { return child<TableView>("tableView"); }
    QToolButton *button(const char *name) const { return child<QToolButton>(name); }
    QCheckBox *box(const char *name) const { return child<QCheckBox>(name); }
    QWidget *ok() const
    {
        return child<QDialogButtonBox>("okButton")->button(QDialogButtonBox::Ok);
    }

    QStringList rows() const
    {
        QStringList texts;
        for (int row = 0; row < table()->model()->rowCount(); ++row)
            texts.append(table()->model()->index(row, 0).data().toString());
        return texts;
    }
    int currentRow() const { return table()->currentIndex().row(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(field(), key, modifiers);
    }
    void type(const char *text) const { QTest::keyClicks(field(), QString::fromUtf8(text)); }
    void click(QWidget *widget) const { QTest::mouseClick(widget, Qt::LeftButton); }
    QPoint centreOfRow(int row) const
    {
        return table()->visualRect(table()->model()->index(row, 0)).center();
    }
    void clickRow(int row) const
    {
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, centreOfRow(row));
    }

    ScratchFolder folder;
    std::unique_ptr<InputFolderDialog> dialog;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

/// The dialog with the cursor staying where it is when a row's text comes in.
inline Shown shownWithStillCursor(const QByteArray &history)
{
    return Shown(history, QString(), "[General]\ncursorLast=false\n");
}

} // namespace InputFolderDialogFixture
