// Stand-in for the host's fixture of a test, for GoogleTest. Covers a fresh host and the check at the end; leaves out other test frameworks, which use testhost.h.
#pragma once

#include "testhost.h"
#include "textencoding.h"

#include <gtest/gtest.h>

namespace hostkit {

/// A test of its own host. It fails when it leaves anything behind: an open object, a lock, a transaction,
/// suspended undo recording, an interface. A test class with a TearDown of its own calls this one's last.
class HostTest : public ::testing::Test {
protected:
    void TearDown() override {
        for (const std::wstring& problem : session.leftovers())
            ADD_FAILURE() << "left behind: " << utf8FromWide(problem);
    }

    AcDbDatabase& database() { return session.database(); }

    TestHost session;
};

} // namespace hostkit
