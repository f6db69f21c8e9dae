// Stand-in for the host's command stack. Covers groups, global and local names, flags, look-up and popping; leaves out command contexts in the user interface.
#pragma once

#include "rxboiler.h"

#include <memory>
#include <string>
#include <vector>

using AcRxFunctionPtr = void (*)();

constexpr Adesk::Int32 ACRX_CMD_MODAL = 0x00;
constexpr Adesk::Int32 ACRX_CMD_TRANSPARENT = 0x01;
constexpr Adesk::Int32 ACRX_CMD_USEPICKSET = 0x02;
constexpr Adesk::Int32 ACRX_CMD_REDRAW = 0x04;
constexpr Adesk::Int32 ACRX_CMD_NOPAPERSPACE = 0x10;
/// The document is locked for reading alone while the command runs.
constexpr Adesk::Int32 ACRX_CMD_DOCREADLOCK = 0x80000;
/// Nobody else may lock it.
constexpr Adesk::Int32 ACRX_CMD_DOCEXCLUSIVELOCK = 0x100000;
/// The command belongs to no document: nothing is locked for it.
constexpr Adesk::Int32 ACRX_CMD_SESSION = 0x200000;
/// The command is no step of its own for undo.
constexpr Adesk::Int32 ACRX_CMD_NO_UNDO_MARKER = 0x400000;

/// One registered command. It belongs to the stack and lives until it or its group is removed.
class AcEdCommand : public AcRxObject {
public:
    AcEdCommand(const wchar_t* group, const wchar_t* globalName, const wchar_t* localName, Adesk::Int32 flags,
                AcRxFunctionPtr function)
        : m_group(group)
        , m_globalName(globalName)
        , m_localName(localName)
        , m_flags(flags)
        , m_function(function) {}

    const wchar_t* commandGroup() const { return m_group.c_str(); }
    const wchar_t* globalName() const { return m_globalName.c_str(); }
    const wchar_t* localName() const { return m_localName.c_str(); }
    Adesk::Int32 commandFlags() const { return m_flags; }
    AcRxFunctionPtr functionAddr() const { return m_function; }

private:
    std::wstring m_group;
    std::wstring m_globalName;
    std::wstring m_localName;
    Adesk::Int32 m_flags;
    AcRxFunctionPtr m_function;
};

/// Walks the commands, groups from the top, each in the order of adding. The stack must not change meanwhile.
class AcEdCommandIterator : public AcRxObject {
public:
    explicit AcEdCommandIterator(std::vector<const AcEdCommand*> commands)
        : m_commands(std::move(commands)) {}
    bool done() const { return m_index >= m_commands.size(); }
    /// True when there is one more.
    bool next() { return ++m_index < m_commands.size(); }
    /// Null when done.
    const AcEdCommand* command() const { return done() ? nullptr : m_commands[m_index]; }
    const wchar_t* commandGroup() const { return done() ? nullptr : m_commands[m_index]->commandGroup(); }

private:
    std::vector<const AcEdCommand*> m_commands;
    std::size_t m_index = 0;
};

/// The commands of one host, in groups. Names are compared without regard to case. A name may stand in
/// several groups: the group on top answers, and that is the newest one unless another was popped. A host
/// offers its stack as the entry "ACAD_REGISTERED_COMMANDS" of its system registry.
class AcEdCommandStack : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcEdCommandStack)

public:
    AcEdCommandStack();
    ~AcEdCommandStack() override;
    AcEdCommandStack(const AcEdCommandStack&) = delete;
    AcEdCommandStack& operator=(const AcEdCommandStack&) = delete;

    /// A null or empty local name stands for the global one. A group that is not there is made, on top.
    /// eInvalidInput for an empty group or global name, a name with blanks, or no function; eDuplicateKey
    /// when the group has the global or local name already.
    Acad::ErrorStatus addCommand(const wchar_t* group, const wchar_t* globalName, const wchar_t* localName,
                                 Adesk::Int32 flags, AcRxFunctionPtr function);
    /// By global name. eKeyNotFound when there is no such group or command.
    Acad::ErrorStatus removeCmd(const wchar_t* group, const wchar_t* globalName);
    Acad::ErrorStatus removeGroup(const wchar_t* group);
    Acad::ErrorStatus popGroupToTop(const wchar_t* group);

    /// The command of that name in the topmost group that has it, or null. Takes the same time with any
    /// number of commands in a group.
    AcEdCommand* lookupGlobalCmd(const wchar_t* name) const;
    AcEdCommand* lookupLocalCmd(const wchar_t* name) const;
    /// As a user types it: a local name, or a global one behind an underscore or where no local name fits. A
    /// dot in front is allowed and means nothing, since no command is ever redefined here.
    AcEdCommand* lookupTyped(const wchar_t* name) const;

    /// All commands, groups from the top, each in the order of adding.
    std::vector<const AcEdCommand*> commands() const;
    /// The caller deletes it.
    AcEdCommandIterator* iterator() const { return new AcEdCommandIterator(commands()); }

private:
    struct Group;
    std::vector<std::unique_ptr<Group>>::iterator find(const wchar_t* group);

    std::vector<std::unique_ptr<Group>> m_groups; // the top first
};

/// The current host's command stack; null when there is no host.
AcEdCommandStack* acedCommandStackOfHost();
#define acedRegCmds acedCommandStackOfHost()
