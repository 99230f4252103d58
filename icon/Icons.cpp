#include "icon/Icons.h"

#include <QtGlobal>

namespace {

/// Beside 48 pixels, the size of the image that is the program's everywhere.
constexpr int kOtherSizes[] = {16, 24, 32, 64, 128, 256};

} // namespace

// The macro declares a function of the generated code, which is in no namespace.
static void initResources()
{
    Q_INIT_RESOURCE(icon);
}

void Icons::load()
{
    initResources();
}

QIcon Icons::program()
{
    load();
    QIcon icon(QStringLiteral(":/icon/sarvik.png"));
    for (const int size : kOtherSizes)
        icon.addFile(QStringLiteral(":/icon/program/%1.png").arg(size));
    return icon;
}
