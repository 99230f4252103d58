#include "settings/dialogs/AssistWindow.h"

namespace {

AssistWindow::Factory &installed()
{
    static AssistWindow::Factory factory;
    return factory;
}

} // namespace

void AssistWindow::setFactory(const Factory &factory)
{
    installed() = factory;
}

AssistWindow *AssistWindow::open(const QString &file, QWidget *parent)
{
    return installed() ? installed()(file, parent) : nullptr;
}
