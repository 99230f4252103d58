#include "settings/dialogs/NumberField.h"

#include <QSpinBox>

#include <algorithm>

void NumberField::show(QSpinBox &field, int value)
{
    field.setRange(std::min(field.minimum(), value), std::max(field.maximum(), value));
    field.setValue(value);
}
