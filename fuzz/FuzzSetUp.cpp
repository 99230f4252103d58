// What the programs do before they read anything, for every fuzzer.

#include <QTextCodec>
#include <QtGlobal>

#include <cstdio>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);

namespace {

// A fuzzer makes a line of debug log a million times.
void dropDebugLog(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qUtf8Printable(qFormatLogMessage(type, context, message)));
}

} // namespace

int LLVMFuzzerInitialize(int *, char ***)
{
    qputenv("UNICODEMAP_JP", "cp932"); // before the first codec is asked for
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    qInstallMessageHandler(dropDebugLog);
    return 0;
}
