#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QSpinBox;
QT_END_NAMESPACE

namespace NumberField {

/// Shows value in field, whose range grows to hold it: a number that somebody
/// typed into the settings file must not change only because it was shown.
void show(QSpinBox &field, int value);

} // namespace NumberField
