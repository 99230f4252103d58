#pragma once

#include "mainwindow/PathEdit.h"
#include "mainwindow/SearchForm.h"
#include "settings/AppSettings.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QtTest>

#include <memory>

/// The search form alone, in no window but its own.
class SearchFormFixture : public QObject {
protected:
    /// With fresh settings, none of the toggles pressed.
    void makeForm()
    {
        AppSettings &settings = AppSettings::instance();
        settings.load(m_folder.path());
        settings.caseinsensitive = false;
        settings.word = false;
        settings.regexp = false;
        m_form = std::make_unique<SearchForm>();
    }

    void show()
    {
        m_form->show();
        QApplication::setActiveWindow(m_form.get());
        QVERIFY(QTest::qWaitForWindowActive(m_form.get(), kPatienceMilliseconds));
    }

    template <typename Widget> Widget *part(const char *name) const
    {
        return m_form->findChild<Widget *>(QLatin1String(name));
    }
    QComboBox *combo(const char *name) const { return part<QComboBox>(name); }

    QImage iconOf(const QString &button) const
    {
        return m_form->findChild<QAbstractButton *>(button)->icon().pixmap(16, 16).toImage();
    }
    static QImage imageOf(const QString &file) { return QIcon(file).pixmap(16, 16).toImage(); }

    const ScratchFolder m_folder;
    std::unique_ptr<SearchForm> m_form;
};
