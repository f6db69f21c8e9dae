// Fixture of a test, for GoogleTest: a fresh host and the check at the end; leaves out other test frameworks,
// which use testhost.h.
#pragma once

#include "axlock.h"
#include "testhost.h"
#include "textencoding.h"

#include <gtest/gtest.h>

#include <memory>

namespace hostkit {

/// A test of its own host. It fails when it leaves anything behind: an open object, a lock, a transaction, a
/// selection set, suspended undo recording, an interface. A test class with a TearDown of its own calls this
/// one's last.
///
/// The document is locked for writing, as a command's is, so that a test can change the drawing. A test of
/// what takes locks itself gives this one back first. Documents that the test opens it locks itself.
class HostTest : public ::testing::Test {
protected:
    void TearDown() override {
        giveLockBack();
        for (const std::wstring& problem : session.leftovers())
            ADD_FAILURE() << "left behind: " << utf8FromWide(problem);
    }

    AcDbDatabase& database() { return session.database(); }
    void giveLockBack() { m_lock.reset(); }

    TestHost session;

private:
    std::unique_ptr<AcAxDocLock> m_lock = std::make_unique<AcAxDocLock>();
};

} // namespace hostkit
