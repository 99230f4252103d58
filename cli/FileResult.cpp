#include "cli/FileResult.h"

namespace {

// A hit string begins with blanks, so no hit can be taken for a head.
bool isHead(const QString &entry)
{
    return entry.startsWith(QLatin1String("::"));
}

} // namespace

void FileResult::visitEach(QStringList entries, const Visitor &visit)
{
    const auto end = entries.end();
    auto next = entries.begin();
    while (next != end) {
        FileResult file;
        file.path = next->mid(2);
        for (++next; next != end && !isHead(*next); ++next) {
            file.hits.append(QString());
            file.hits.last().swap(*next);
        }
        visit(file);
    }
}
