#pragma once

#include <QDialog>
#include <QNetworkAccessManager>
#include <QUrl>

#include <memory>

QT_BEGIN_NAMESPACE
class QPixmap;
namespace Ui {
class verupdialog;
}
QT_END_NAMESPACE

/// Shows the program's icon, name and version. What would look for a new version
/// is there, but hidden and without effect: nothing is asked of the network.
class verupdialog : public QDialog {
    Q_OBJECT

public:
    verupdialog(const QString &programName, const QString &version, const QPixmap &icon,
                QWidget *parent = nullptr);
    ~verupdialog() override;

private:
    QString versionText() const;

    std::unique_ptr<Ui::verupdialog> m_ui;
    /// Where a new version would be; empty.
    QUrl m_url;
    /// Makes no request.
    QNetworkAccessManager m_network;
    /// Ends in "/".
    QString m_programDirectory;
    QString m_programName;
    QString m_version;
};
