#pragma once

#include <QString>

#include <functional>

/// Which code set a file is to be read in: the limits around detectCodeSet().
/// Everything here may run on any thread, except that detectFileCodeSet() calls
/// the box on the thread it runs on.

/// Returned in place of a code-set number: too large, or binary content.
constexpr int kFileRefused = -2;

/// The settings that detection depends on, with their defaults.
struct DetectionSettings {
    /// Larger files are refused; bytes. Negative: every file is refused.
    qint64 sizeLimitBytes = 1048576;
    /// Leading bytes examined. Zero or negative: none, and then every file is
    /// Shift-JIS; more than kLargestSample counts as that.
    int sampleSize = 4096;
    /// Samples of up to this many bytes are judged by the short rule.
    int detectSize = 2048;
    /// What a file that cannot be opened or judged is taken for.
    int fallbackCodeSet = 1;
    int fallbackLineEnd = 2;
    bool fallbackBom = false;
};

/// Keeps a senseless setting from filling the memory; bytes.
constexpr int kLargestSample = 64 * 1024 * 1024;

/// Shows a critical message box with one OK button.
using AutoDetectionBox = std::function<void(const QString &title, const QString &text)>;

/// For a file already in memory: bytes holds its first readSize bytes, at
/// least as many as are sampled unless the file shrank while it was read;
/// fileSize is its size as opened. Returns the code-set number, or kFileRefused
/// for a file above sizeLimitBytes or kLargestText, or with four zero bytes in
/// a row in the sample. *lineEnd (may be null) becomes a CodeSet::LineEnd, CrLf
/// for a refused file; *bom (may be null) whether a byte-order mark was
/// recognised.
int codeSetOfContent(const char *bytes, qint64 readSize, qint64 fileSize,
                     const DetectionSettings &settings, int *lineEnd, bool *bom = nullptr);

/// For the search: the same for the file at path, of which only the sample is
/// read. A file that cannot be opened, or is no regular file, gives
/// CodeSet::Default with CrLf.
int getFileCodeSet(const QString &path, int *lineEnd, const DetectionSettings &settings);

/// For the preview and the line count, where the size does not matter: the
/// code-set number, the line end and whether there is a byte-order mark; none
/// of the pointers may be null. A file that cannot be opened gives the
/// fall-backs of the settings; kFileRefused (with CrLf and no mark) for binary
/// content.
int detectFileCodeSet(const QString &path, int *lineEnd, bool *bom,
                      const DetectionSettings &settings, const AutoDetectionBox &box);

/// The last step of detectFileCodeSet(): detected stands unless it is Default,
/// which no detection gives today; then the user is told so and gets the
/// fall-backs.
int codeSetOrFallback(int detected, int *lineEnd, bool *bom, const DetectionSettings &settings,
                      const AutoDetectionBox &box);
