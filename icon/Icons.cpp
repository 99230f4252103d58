#include "icon/Icons.h"

#include <QtGlobal>

namespace {

constexpr int kProgramSizes[] = {16, 24, 32, 48, 64, 128, 256};

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
    QIcon icon;
    for (const int size : kProgramSizes)
        icon.addFile(QStringLiteral(":/icon/program/%1.png").arg(size));
    return icon;
}
