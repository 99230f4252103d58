#pragma once

#include <QStringList>

QT_BEGIN_NAMESPACE
class QCoreApplication;
QT_END_NAMESPACE

/// The toolkit's own texts (the buttons of message boxes, the file and colour
/// choosers, the menus of text fields) in Japanese, as all of the program's are,
/// whatever the language of the system. They come in the file "qtbase_ja.qm",
/// which belongs to the toolkit; without it they stay English.
namespace ToolkitTexts {

/// Where the file is looked for, in this order: "translations" beside the
/// program, then where the toolkit has its own. Needs an application object.
QStringList folders();

/// Translates from now on; call it before the first window is built. False when
/// there is no such file, or none that can be read. User interface thread only.
bool install(QCoreApplication &application);
bool installFrom(const QStringList &folders, QCoreApplication &application);

} // namespace ToolkitTexts
