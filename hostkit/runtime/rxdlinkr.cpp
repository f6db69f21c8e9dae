#include "rxdlinkr.h"

#include <algorithm>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

constexpr unsigned processDetach = 0;
constexpr unsigned processAttach = 1;

using DllMainFunction = int (*)(void*, unsigned, void*);
using EntryFunction = AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*);

std::wstring widen(const char* bytes) { return std::filesystem::path(bytes).wstring(); }

// A look-up in a module also sees the libraries that it depends on, and those have entry points of their own.
void* ownSymbol(void* handle, const char* name, const std::filesystem::path& file) {
    void* symbol = dlsym(handle, name);
    Dl_info where{};
    if (!symbol || !dladdr(symbol, &where) || !where.dli_fname) return nullptr;
    std::error_code ignored;
    return std::filesystem::equivalent(where.dli_fname, file, ignored) ? symbol : nullptr;
}

// "version 10.1 interface 2 compiler 1017" of a module's file; empty where it bears no mark.
std::string markOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    constexpr std::string_view start = HOSTKIT_MARK_START;
    const std::size_t begin = bytes.find(start);
    if (begin == std::string::npos) return {};
    const std::size_t end = bytes.find(std::string_view(HOSTKIT_MARK_END), begin);
    return end == std::string::npos ? std::string()
                                    : bytes.substr(begin + start.size(), end - begin - start.size());
}

// What this kit's own modules bear.
std::string ownMark() {
    constexpr std::string_view whole = HOSTKIT_MODULE_MARK;
    constexpr std::size_t start = std::string_view(HOSTKIT_MARK_START).size();
    return std::string(whole.substr(start, whole.size() - start - std::string_view(HOSTKIT_MARK_END).size()));
}

std::wstring versionProblem(const std::string& mark) {
    const std::string was = mark.empty() ? ": the module bears no mark of the kit that it was built against"
                                         : ": the module was built against " + mark + " of the kit";
    return widen((was + "; this one is " + ownMark() + ". Build the module again").c_str());
}

} // namespace

struct AcRxDynamicLinker::Module {
    std::filesystem::path file;
    void* handle = nullptr;
    DllMainFunction dllMain = nullptr;
    EntryFunction entry = nullptr;
    bool locked = true;
    bool documentAware = false;
};

AcRxDynamicLinker::AcRxDynamicLinker() = default;

AcRxDynamicLinker::~AcRxDynamicLinker() {
    while (!m_modules.empty()) {
        leave(*m_modules.back());
        m_modules.pop_back();
    }
}

Acad::ErrorStatus AcRxDynamicLinker::fail(Acad::ErrorStatus status, std::wstring problem) {
    m_problem = std::move(problem);
    return status;
}

Acad::ErrorStatus AcRxDynamicLinker::loadModule(const wchar_t* file) {
    m_problem.clear();
    if (!file || !*file) return fail(Acad::eModuleNotFound, L"no module is named");
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(std::filesystem::path(file), error);
    if (error || !std::filesystem::is_regular_file(path, error))
        return fail(Acad::eModuleNotFound, std::wstring(file) + L": there is no such file");
    if (find(file)) return Acad::eOk;

    const std::string mark = markOf(path);
    if (!mark.empty() && mark != ownMark())
        return fail(Acad::eModuleLoadFailed, path.wstring() + versionProblem(mark));
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        const char* why = dlerror();
        return fail(Acad::eModuleLoadFailed, widen(why ? why : "the system's loader refused it"));
    }
    auto module = std::make_unique<Module>();
    module->file = path;
    module->handle = handle;
    module->dllMain = reinterpret_cast<DllMainFunction>(ownSymbol(handle, "DllMain", path));
    module->entry = reinterpret_cast<EntryFunction>(ownSymbol(handle, "acrxEntryPoint", path));
    if (!module->entry) {
        dlclose(handle);
        return fail(Acad::eModuleEntryMissing,
                    path.wstring() + L": the module has no acrxEntryPoint of its own");
    }
    if (mark.empty()) {
        dlclose(handle);
        return fail(Acad::eModuleLoadFailed, path.wstring() + versionProblem(mark));
    }
    if (module->dllMain && !module->dllMain(handle, processAttach, nullptr)) {
        dlclose(handle);
        return fail(Acad::eModuleAttachFailed, path.wstring() + L": DllMain refused the attach");
    }
    Module& loaded = *module;
    m_modules.push_back(std::move(module)); // known before its entry runs, which asks by its packet
    if (loaded.entry(AcRx::kInitAppMsg, &loaded) == AcRx::kRetOK) {
        if (m_afterLoading) m_afterLoading();
        return Acad::eOk;
    }
    if (loaded.dllMain) loaded.dllMain(handle, processDetach, nullptr);
    dlclose(handle);
    m_modules.pop_back();
    return fail(Acad::eModuleAttachFailed, path.wstring() + L": acrxEntryPoint reported an error");
}

Acad::ErrorStatus AcRxDynamicLinker::unloadModule(const wchar_t* file) {
    m_problem.clear();
    Module* module = file ? find(file) : nullptr;
    if (!module)
        return fail(Acad::eKeyNotFound, std::wstring(file ? file : L"") + L": the module is not loaded");
    if (module->locked) return fail(Acad::eModuleLocked, module->file.wstring() + L": the module is locked");
    leave(*module);
    std::erase_if(m_modules, [module](const auto& each) { return each.get() == module; });
    return Acad::eOk;
}

void AcRxDynamicLinker::leave(Module& module) {
    module.entry(AcRx::kUnloadAppMsg, &module);
    if (module.dllMain) module.dllMain(module.handle, processDetach, nullptr);
    dlclose(module.handle);
}

bool AcRxDynamicLinker::isLoaded(const wchar_t* file) const { return file && find(file); }

std::vector<std::wstring> AcRxDynamicLinker::moduleNames() const {
    std::vector<std::wstring> names;
    for (const auto& module : m_modules) names.push_back(module->file.filename().wstring());
    return names;
}

bool AcRxDynamicLinker::lockApplication(void* packet) const {
    Module* module = findPacket(packet);
    if (module) module->locked = true;
    return module;
}

bool AcRxDynamicLinker::unlockApplication(void* packet) const {
    Module* module = findPacket(packet);
    if (module) module->locked = false;
    return module;
}

bool AcRxDynamicLinker::isApplicationLocked(const wchar_t* file) const {
    const Module* module = find(file);
    return module && module->locked;
}

bool AcRxDynamicLinker::registerAppMDIAware(void* packet) const {
    Module* module = findPacket(packet);
    if (module) module->documentAware = true;
    return module;
}

bool AcRxDynamicLinker::isAppMDIAware(const wchar_t* file) const {
    const Module* module = find(file);
    return module && module->documentAware;
}

void AcRxDynamicLinker::broadcast(AcRx::AppMsgCode message) {
    for (std::size_t i = 0; i < m_modules.size(); ++i) m_modules[i]->entry(message, m_modules[i].get());
}

AcRxDynamicLinker::Module* AcRxDynamicLinker::find(const wchar_t* file) const {
    std::error_code ignored;
    const std::filesystem::path path(file);
    for (const auto& module : m_modules) {
        if (module->file.filename() == path || std::filesystem::equivalent(module->file, path, ignored))
            return module.get();
    }
    return nullptr;
}

AcRxDynamicLinker::Module* AcRxDynamicLinker::findPacket(void* packet) const {
    for (const auto& module : m_modules)
        if (module.get() == packet) return module.get();
    return nullptr;
}
