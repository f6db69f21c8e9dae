#pragma once

#include "aced.h"
#include "hosttest.h"

#include <functional>

/// What the command GO does; commands are plain functions, so each test puts its own here.
inline std::function<void()> body;
inline void runBody() {
    const auto running = body; // which may put another in its place
    running();
}

/// A host with the command GO, "va" in its local language.
class CommandTest : public hostkit::HostTest {
protected:
    CommandTest() { host.commands().addCommand(L"TEST", L"GO", L"va", ACRX_CMD_MODAL, runBody); }
    ~CommandTest() override { body = nullptr; }

    hostkit::CommandResult run(const std::wstring& line, std::function<void()> what,
                               hostkit::MoreInput more = hostkit::MoreInput::none) {
        body = std::move(what);
        return host.run(line, more);
    }
    hostkit::SystemValue value(const wchar_t* name) {
        hostkit::SystemValue found;
        EXPECT_EQ(host.variables().get(name, found), hostkit::VariableResult::ok)
            << hostkit::utf8FromWide(name);
        return found;
    }

    hostkit::ScriptedPort& port = session.port();
    hostkit::Host& host = session.host();
    AcApDocManager& documents = host.documents();
};
