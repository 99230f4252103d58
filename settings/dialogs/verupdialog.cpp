#include "settings/dialogs/verupdialog.h"

#include "ui_verupdialog.h"

#include <QCoreApplication>
#include <QDir>
#include <QPixmap>

verupdialog::verupdialog(const QString &programName, const QString &version, const QPixmap &icon,
                         QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::verupdialog>())
    , m_programDirectory(QCoreApplication::applicationDirPath() + QLatin1Char('/'))
    , m_programName(programName)
    , m_version(version)
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_ui->lbl_icon->setPixmap(icon);
    m_ui->lbl_version->setText(versionText());
    m_ui->lbl_version->setToolTip(QDir::toNativeSeparators(m_programDirectory));
    m_ui->lbl_newVersionCheck->hide();
    m_ui->lbl_newVersionFound->hide();
    m_ui->bar_newVersion->hide();
    m_ui->pb_ok->setFocus();
}

verupdialog::~verupdialog() = default;

QString verupdialog::versionText() const
{
    // The toolkit's version is what a report of a fault needs.
    return m_programName
        + QStringLiteral(" ver %1\nQt %2").arg(m_version, QLatin1String(qVersion()));
}
