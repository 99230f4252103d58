#include "settings/SaveSteps.h"

#include <utility>

namespace SaveSteps {

namespace {

Observer &observer()
{
    static Observer instance;
    return instance;
}

} // namespace

void setObserver(Observer newObserver)
{
    observer() = std::move(newObserver);
}

bool mayTake(Step step)
{
    return !observer() || observer()(step);
}

} // namespace SaveSteps
