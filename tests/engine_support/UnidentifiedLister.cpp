#include "tests/engine_support/UnidentifiedLister.h"

namespace {

constexpr quint64 kDevice = 7;

} // namespace

QVector<FolderEntry> UnidentifiedLister::list(const QString &folder, const Claim &claim,
                                              const KeepGoing &keepGoing) const
{
    return NativeFolderLister::list(
        folder,
        [&claim](const FolderIdentity &) {
            return claim({kDevice, 0});
        },
        keepGoing);
}

bool UnidentifiedLister::identify(const QString &, FolderIdentity *) const
{
    return false;
}
