// Writes the man page, or the completion of a shell, for the option table that it
// was built with: sarvik-cli-pages man|bash|zsh|fish FILE

#include "cli/ManPage.h"
#include "cli/ShellCompletion.h"

#include <QCoreApplication>
#include <QSaveFile>
#include <QStringList>

#include <cstdio>
#include <cstdlib>

namespace {

/// Empty when there is no such kind of page.
QString pageOf(const QString &kind)
{
    if (kind == QLatin1String("man"))
        return ManPage::text(QStringLiteral(SARVIK_VERSION));
    if (kind == QLatin1String("bash"))
        return ShellCompletion::bash();
    if (kind == QLatin1String("zsh"))
        return ShellCompletion::zsh();
    if (kind == QLatin1String("fish"))
        return ShellCompletion::fish();
    return QString();
}

bool write(const QString &path, const QString &text)
{
    QSaveFile file(path);
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString page = pageOf(arguments.value(1));
    if (arguments.size() != 3 || page.isEmpty()) {
        std::fputs("usage: sarvik-cli-pages man|bash|zsh|fish FILE\n", stderr);
        return EXIT_FAILURE;
    }
    if (!write(arguments.at(2), page)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(arguments.at(2)));
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
