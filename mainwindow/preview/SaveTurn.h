#pragma once

#include <QString>

/// Lets the saves of one file take turns, in all processes of this program: while
/// one has its turn, the constructor of another waits. The turn ends with the object, and
/// with its process, however that ends.
///
/// After a few seconds the constructor waits no longer: another program may use the same
/// means for years. A file that is not there, or may not be read, has no turns.
/// To be destroyed on the thread that made it.
class SaveTurn {
public:
    explicit SaveTurn(const QString &path);
    ~SaveTurn();
    SaveTurn(const SaveTurn &) = delete;
    SaveTurn &operator=(const SaveTurn &) = delete;

private:
#ifdef Q_OS_WIN
    void *m_mutex = nullptr;
    bool m_owned = false;
#else
    int m_descriptor = -1;
#endif
};
