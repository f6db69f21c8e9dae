#include "accmd.h"

#include "casefold.h"

#include <algorithm>
#include <cwchar>
#include <unordered_map>

HOSTKIT_KIT_CLASS_WITHOUT_VALUES(AcEdCommandStack, AcRxObject)

namespace {

using Names = std::unordered_map<std::wstring_view, AcEdCommand*, hostkit::FoldedHash, hostkit::FoldedEqual>;

bool isName(const wchar_t* text) { return text && *text && std::wcspbrk(text, L" \t\r\n\"") == nullptr; }

AcEdCommand* commandIn(const Names& names, std::wstring_view name) {
    const auto found = names.find(name);
    return found == names.end() ? nullptr : found->second;
}

} // namespace

// Each group keeps its names beside its commands, so that adding to a large group is as quick as to a small
// one.
struct AcEdCommandStack::Group {
    std::wstring name;
    std::vector<std::unique_ptr<AcEdCommand>> commands{}; // in the order of adding
    Names globalNames{};
    Names localNames{};
};

AcEdCommandStack::AcEdCommandStack() = default;
AcEdCommandStack::~AcEdCommandStack() = default;

std::vector<std::unique_ptr<AcEdCommandStack::Group>>::iterator AcEdCommandStack::find(const wchar_t* group) {
    if (!group) return m_groups.end();
    return std::find_if(m_groups.begin(), m_groups.end(),
                        [group](const auto& each) { return hostkit::equalFolded(each->name, group); });
}

Acad::ErrorStatus AcEdCommandStack::addCommand(const wchar_t* group, const wchar_t* globalName,
                                               const wchar_t* localName, Adesk::Int32 flags,
                                               AcRxFunctionPtr function) {
    if (!localName || !*localName) localName = globalName;
    if (!group || !*group || !isName(globalName) || !isName(localName) || !function)
        return Acad::eInvalidInput;
    auto place = find(group);
    if (place == m_groups.end()) {
        m_groups.insert(m_groups.begin(), std::make_unique<Group>(Group{group}));
        place = m_groups.begin();
    }
    Group& target = **place;
    if (target.globalNames.contains(globalName) || target.localNames.contains(localName))
        return Acad::eDuplicateKey;
    target.commands.push_back(std::make_unique<AcEdCommand>(group, globalName, localName, flags, function));
    AcEdCommand* const added = target.commands.back().get();
    target.globalNames.emplace(added->globalName(), added);
    target.localNames.emplace(added->localName(), added);
    return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::removeCmd(const wchar_t* group, const wchar_t* globalName) {
    const auto place = find(group);
    if (place == m_groups.end() || !globalName) return Acad::eKeyNotFound;
    Group& target = **place;
    AcEdCommand* const removed = commandIn(target.globalNames, globalName);
    if (!removed) return Acad::eKeyNotFound;
    // The names go first: they are views into the command.
    target.globalNames.erase(removed->globalName());
    target.localNames.erase(removed->localName());
    std::erase_if(target.commands, [removed](const auto& each) { return each.get() == removed; });
    return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::removeGroup(const wchar_t* group) {
    const auto place = find(group);
    if (place == m_groups.end()) return Acad::eKeyNotFound;
    m_groups.erase(place);
    return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::popGroupToTop(const wchar_t* group) {
    const auto place = find(group);
    if (place == m_groups.end()) return Acad::eKeyNotFound;
    std::rotate(m_groups.begin(), place, place + 1);
    return Acad::eOk;
}

AcEdCommand* AcEdCommandStack::lookupGlobalCmd(const wchar_t* name) const {
    if (!name) return nullptr;
    for (const auto& group : m_groups)
        if (AcEdCommand* command = commandIn(group->globalNames, name)) return command;
    return nullptr;
}

AcEdCommand* AcEdCommandStack::lookupLocalCmd(const wchar_t* name) const {
    if (!name) return nullptr;
    for (const auto& group : m_groups)
        if (AcEdCommand* command = commandIn(group->localNames, name)) return command;
    return nullptr;
}

AcEdCommand* AcEdCommandStack::lookupTyped(const wchar_t* name) const {
    if (!name) return nullptr;
    bool globalOnly = false;
    for (; *name == L'_' || *name == L'.' || *name == L'\''; ++name) globalOnly |= *name == L'_';
    AcEdCommand* command = globalOnly ? nullptr : lookupLocalCmd(name);
    return command ? command : lookupGlobalCmd(name);
}

std::vector<const AcEdCommand*> AcEdCommandStack::commands() const {
    std::vector<const AcEdCommand*> all;
    for (const auto& group : m_groups)
        for (const auto& command : group->commands) all.push_back(command.get());
    return all;
}
