#include "accmd.h"

#include "casefold.h"

#include <algorithm>
#include <cwchar>

HOSTKIT_KIT_CLASS_WITHOUT_VALUES(AcEdCommandStack, AcRxObject)

// The names of a group are looked up at each adding; modules register hundreds of commands, one by one.
struct AcEdCommandStack::Group {
    std::wstring name;
    std::vector<std::unique_ptr<AcEdCommand>> commands{};
    Names globalNames{};
    Names localNames{};
};

namespace {

bool isName(const wchar_t* text) { return text && *text && std::wcspbrk(text, L" \t\r\n\"") == nullptr; }

} // namespace

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
    Group& found = **place;
    if (found.globalNames.contains(std::wstring_view(globalName)) ||
        found.localNames.contains(std::wstring_view(localName)))
        return Acad::eDuplicateKey;
    m_isIndexed = false;
    AcEdCommand* const command =
        found.commands
            .emplace_back(std::make_unique<AcEdCommand>(group, globalName, localName, flags, function))
            .get();
    found.globalNames.emplace(command->globalName(), command);
    found.localNames.emplace(command->localName(), command);
    return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::removeCmd(const wchar_t* group, const wchar_t* globalName) {
    m_isIndexed = false;
    const auto place = find(group);
    if (place == m_groups.end() || !globalName) return Acad::eKeyNotFound;
    Group& holder = **place;
    const auto found = holder.globalNames.find(std::wstring_view(globalName));
    if (found == holder.globalNames.end()) return Acad::eKeyNotFound;
    const AcEdCommand* const command = found->second;
    holder.localNames.erase(command->localName());
    holder.globalNames.erase(found);
    std::erase_if(holder.commands, [command](const auto& each) { return each.get() == command; });
    return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::removeGroup(const wchar_t* group) {
    m_isIndexed = false;
    const auto place = find(group);
    if (place == m_groups.end()) return Acad::eKeyNotFound;
    m_groups.erase(place);
    return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::popGroupToTop(const wchar_t* group) {
    m_isIndexed = false;
    const auto place = find(group);
    if (place == m_groups.end()) return Acad::eKeyNotFound;
    std::rotate(m_groups.begin(), place, place + 1);
    return Acad::eOk;
}

// The first of a name stays, and groups come from the top.
void AcEdCommandStack::indexNames() const {
    if (m_isIndexed) return;
    m_globalNames.clear();
    m_localNames.clear();
    for (const auto& group : m_groups)
        for (const auto& command : group->commands) {
            m_globalNames.try_emplace(command->globalName(), command.get());
            m_localNames.try_emplace(command->localName(), command.get());
        }
    m_isIndexed = true;
}

AcEdCommand* AcEdCommandStack::lookupGlobalCmd(const wchar_t* name) const {
    if (!name) return nullptr;
    indexNames();
    const auto found = m_globalNames.find(std::wstring_view(name));
    return found == m_globalNames.end() ? nullptr : found->second;
}

AcEdCommand* AcEdCommandStack::lookupLocalCmd(const wchar_t* name) const {
    if (!name) return nullptr;
    indexNames();
    const auto found = m_localNames.find(std::wstring_view(name));
    return found == m_localNames.end() ? nullptr : found->second;
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
