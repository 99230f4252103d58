#pragma once

#include "tests/mainwindow/WindowFixture.h"

#include <QLocale>
#include <QObject>

#include <memory>

/// What tests of the main window share; each makes its fixture in init().
class WindowTest : public QObject {
    Q_OBJECT

protected:
    std::unique_ptr<WindowFixture> m_fixture;

private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }
    void cleanupTestCase() { WindowFixture::waitForFading(); }
    void cleanup() { m_fixture.reset(); }
};
