#pragma once

#include <QMessageBox>

/// What the main window asks before it does something.
namespace Questions {

/// Whether to close the program.
bool quit(QWidget *parent);

/// Whether to search all files, not only texts.
bool searchAllFiles(QWidget *parent);

} // namespace Questions
