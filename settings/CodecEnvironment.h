#pragma once

#include <QByteArray>
#include <QString>

/// What the Japanese text codecs and the network module are told before they
/// are used.
namespace CodecEnvironment {

/// Rules for QLoggingCategory::setFilterRules. The blank in the category's name
/// is wanted.
QString loggingFilterRules();

/// The value that the environment variable "UNICODEMAP_JP" is to have when it
/// has the value current (empty: unset): one that names "cp932", by which the
/// codecs map what Windows' Japanese encoding adds to the standard.
QByteArray unicodeMap(const QByteArray &current);

/// Sets the variable in this process's environment.
void applyUnicodeMap();

} // namespace CodecEnvironment
