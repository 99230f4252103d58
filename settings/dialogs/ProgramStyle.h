#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QColor;
class QPalette;
class QStyle;
QT_END_NAMESPACE

/// How the program's widgets are drawn, on every desktop.
namespace ProgramStyle {

/// Fusion, but without the light shadow below disabled texts, which on a dark
/// ground is brighter than the texts, and with check boxes that are seen there while
/// they are not checked. The caller owns it.
QStyle *create();

/// What is drawn around the box of a check box.
QColor boxOutline(const QPalette &palette);

} // namespace ProgramStyle
