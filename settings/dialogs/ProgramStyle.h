#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QStyle;
QT_END_NAMESPACE

/// How the program's widgets are drawn, on every desktop.
namespace ProgramStyle {

/// Fusion, but without the light shadow below disabled texts, which on a dark
/// ground is brighter than the texts. The caller owns it.
QStyle *create();

} // namespace ProgramStyle
