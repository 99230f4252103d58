#pragma once

#include "settings/AppSettings.h"
#include "settings/dialogs/optionDialog.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"

#include <QDialogButtonBox>
#include <QFrame>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

/// What the tests of the option dialog share.
namespace OptionDialogFixture {

inline AppSettings &settings()
{
    return AppSettings::instance();
}

inline QStringList list(const char *texts)
{
    return QString::fromUtf8(texts).split(QLatin1Char('|'));
}

/// The dialog on the screen.
class Shown {
public:
    Shown()
    {
        dialog.show();
        dialog.activateWindow();
        if (!QTest::qWaitForWindowActive(&dialog, kPatienceMilliseconds))
            qFatal("the dialog is not on the screen");
    }

    template <typename Widget = QWidget> Widget *child(const char *name) const
    {
        auto *widget = dialog.findChild<Widget *>(QLatin1String(name));
        if (!widget)
            qFatal("no widget %s", name);
        return widget;
    }
    QTabWidget *pages() const { return child<QTabWidget>("tabWidget"); }
    /// Turns to the page that the widget is on.
    void turnTo(const QWidget *widget) const
    {
        for (int i = 0; i < pages()->count(); ++i) {
            if (pages()->widget(i)->isAncestorOf(widget))
                pages()->setCurrentIndex(i);
        }
    }
    void click(const char *name) const
    {
        auto *button = child<QPushButton>(name);
        turnTo(button);
        QTest::mouseClick(button, Qt::LeftButton);
    }
    void enter(const char *name, const char *text) const
    {
        auto *field = child<QLineEdit>(name);
        turnTo(field);
        field->clear();
        QTest::keyClicks(field, QString::fromUtf8(text));
    }
    QString sample(const char *suffix) const
    {
        return child<QFrame>(QByteArray(QByteArray("sample_") + suffix).constData())->styleSheet();
    }
    void ok() const
    {
        auto *buttons = child<QDialogButtonBox>("buttonBox");
        QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
    }
    void cancel() const
    {
        auto *buttons = child<QDialogButtonBox>("buttonBox");
        QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
    }

    optionDialog dialog;
};

inline QString sheet(const char *colour)
{
    return QStringLiteral("QWidget {background-color: %1;}").arg(QLatin1String(colour));
}

/// The settings as they are without a file.
inline void loadDefaults()
{
    const ScratchFolder empty;
    settings().load(empty.path());
    // A load leaves it as it is.
    settings().classcolor = QColor();
}

} // namespace OptionDialogFixture
