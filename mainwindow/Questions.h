#pragma once

#include <QMessageBox>

/// What the main window asks before it does something.
namespace Questions {

/// Whether to close the program.
bool quit(QWidget *parent);

/// Whether to search all files, not only texts.
bool searchAllFiles(QWidget *parent);

/// Whether to save path, whose text was edited: Yes, No or Cancel.
QMessageBox::StandardButton saveModified(QWidget *parent, const QString &path);

/// Whether to save although something would be lost that nobody edited; why says
/// what. No is the default.
bool saveAllTheSame(QWidget *parent, const QString &path, const QString &why);

/// Tells that something went wrong.
void tellFailure(QWidget *parent, const QString &text);

} // namespace Questions
