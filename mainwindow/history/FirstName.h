#pragma once

#include <QString>

/// The name that a file is known by from then on.
namespace FirstName {

enum class Result { Given, Taken, Failed };

/// Moves the file temporary to path, in the same folder, in one step. Taken when
/// there is something at path already, which stays as it is, also when another process
/// makes it at this instant; then and after Failed the file is still temporary. Any
/// thread.
Result give(const QString &temporary, const QString &path);

} // namespace FirstName
