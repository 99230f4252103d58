#pragma once

#include <QtGlobal>

class GrepEditor;

QT_BEGIN_NAMESPACE
class QSplitter;
QT_END_NAMESPACE

/// What the wheel and the mouse do to the two text views, by keys in them.
///
/// | key | effect |
/// |---|---|
/// | Ctrl++, Ctrl+= | letters one point larger |
/// | Ctrl+- | letters one point smaller |
/// | Ctrl+0 | letters as set |
/// | Alt+Up, Alt+Down | the border between the views goes up or down |
namespace ViewKeys {

/// The splitter holds the result view above the preview. The keys belong to view:
/// Alt+Down in a field of the form still opens its list.
void install(GrepEditor *view, QSplitter *splitter);

/// Moves the border between the first two widgets, as far as they can shrink.
/// pixels is positive downwards.
void moveBorder(QSplitter *splitter, int pixels);

} // namespace ViewKeys
