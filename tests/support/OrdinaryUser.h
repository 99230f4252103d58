#pragma once

/// While it lives, the calling thread's file accesses are those of a user
/// without privileges, so that tests of missing permissions mean something
/// when the suite runs as root. Destroy it on the thread that made it. The
/// folder that holds the tree must be open to others (TreeBuilder::setMode).
class OrdinaryUser {
public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

    /// False where the privileges could not be laid down or permissions mean
    /// nothing: the test skips.
    bool inForce() const { return m_inForce; }

private:
    bool m_inForce = false;
    bool m_switched = false;
};
