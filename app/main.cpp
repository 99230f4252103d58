#include "icon/Icons.h"
#include "mainwindow/MainWindow.h"
#include "mainwindow/RunControl.h"
#include "settings/AppSettings.h"
#include "settings/ApplicationDirectory.h"
#include "settings/ApplicationPalette.h"
#include "settings/LocaleSetup.h"
#include "settings/ParameterFile.h"
#include "settings/ProcessEnd.h"
#include "settings/StarterSettings.h"
#include "settings/StyleSheet.h"
#include "settings/dialogs/ProgramStyle.h"
#include "settings/dialogs/ToolkitTexts.h"

#include <QApplication>
#include <QToolTip>

namespace {

void applyLook(const QString &appDir)
{
    QApplication::setStyle(ProgramStyle::create());
    const QPalette palette = ApplicationPalette::fromSettings(AppSettings::instance());
    QApplication::setPalette(palette);
    // After the palette of all widgets, which takes back those of single classes.
    QToolTip::setPalette(ApplicationPalette::forToolTips(palette));
    if (const auto sheet = StyleSheet::read(appDir))
        qApp->setStyleSheet(*sheet);
}

int runWindow(const QString &appDir)
{
    const ParameterFile::Content request = ParameterFile(appDir).read();
    MainWindow window(request.pathlist, request.mask, request.findword);
    window.show();
    return QApplication::exec();
}

/// A search that is inside a line of a slow pattern goes on until the process ends.
/// All is saved by then, and no destructor may take away what it uses.
int endProcess(int exitStatus)
{
    if (RunControl::isAnyLeftBehind())
        ProcessEnd::atOnce(exitStatus);
    return exitStatus;
}

int runProgram(int argc, char *argv[])
{
    LocaleSetup::useUtf8InPlainLocale();
    LocaleSetup::nameTimeZone();
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    // One and a half stays that; rounded, it would be twice the size.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(argc, argv);
    const QString appDir = ApplicationDirectory::path();
    QCoreApplication::addLibraryPath(QCoreApplication::applicationDirPath());
    QCoreApplication::setApplicationName(QStringLiteral("sarvik"));
    QApplication::setWindowIcon(Icons::program());
    ToolkitTexts::install(application);
    StarterSettings::provide(appDir);
    AppSettings::instance().load(appDir);
    applyLook(appDir);
    return endProcess(runWindow(appDir));
}

} // namespace

int main(int argc, char *argv[])
{
    return ProcessEnd::withStatus(runProgram(argc, argv));
}
