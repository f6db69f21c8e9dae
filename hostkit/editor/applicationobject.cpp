#include "applicationobject.h"

#include "aced.h"
#include "adscodes.h"
#include "host.h"
#include "hostapplication.h"
#include "menugroup.h"
#include "menuobjects.h"
#include "programobject.h"

namespace hostkit {
namespace {

constexpr const wchar_t* startupVariable = L"STARTUP";

class DocumentObject final : public ProgramObject<IHostDocument, IID_IHostDocument> {
public:
    DocumentObject(std::shared_ptr<ProgramState> state, AcApDocument& document)
        : ProgramObject(std::move(state))
        , m_document(document)
        , m_life(document.life()) {}

    HRESULT get_FullName(BSTR* name) override {
        if (!name) return E_POINTER;
        *name = nullptr;
        return m_life.expired() ? E_FAIL : handOutText(name, m_document.fileName());
    }
    HRESULT StartUndoMark() override {
        if (m_life.expired()) return E_FAIL;
        m_document.startUndoMark();
        return S_OK;
    }
    HRESULT EndUndoMark() override { return !m_life.expired() && m_document.endUndoMark() ? S_OK : E_FAIL; }

private:
    ~DocumentObject() override = default;
    AcApDocument& m_document; ///< not looked at once its life has ended
    std::weak_ptr<const void> m_life;
};

class PreferencesSystemObject final
    : public ProgramObject<IHostPreferencesSystem, IID_IHostPreferencesSystem> {
public:
    using ProgramObject::ProgramObject;

    HRESULT get_EnableStartupDialog(VARIANT_BOOL* enabled) override {
        if (!enabled) return E_POINTER;
        SystemValue value;
        if (!host() || host()->variables().get(startupVariable, value) != VariableResult::ok) return E_FAIL;
        *enabled = value.integer != 0 ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }
    HRESULT put_EnableStartupDialog(VARIANT_BOOL enabled) override {
        SystemValue value;
        value.type = RTSHORT;
        value.integer = enabled != VARIANT_FALSE ? 1 : 0;
        const bool isSet = host() && host()->variables().set(startupVariable, value) == VariableResult::ok;
        return isSet ? S_OK : E_FAIL;
    }

private:
    ~PreferencesSystemObject() override = default;
};

class PreferencesObject final : public ProgramObject<IHostPreferences, IID_IHostPreferences> {
public:
    using ProgramObject::ProgramObject;

    HRESULT get_System(IHostPreferencesSystem** page) override {
        if (!page) return E_POINTER;
        *page = nullptr;
        return host() ? handOut<PreferencesSystemObject>(page, state()) : E_FAIL;
    }

private:
    ~PreferencesObject() override = default;
};

class ApplicationObject final : public ProgramObject<IHostApplication, IID_IHostApplication> {
public:
    using ProgramObject::ProgramObject;

    HRESULT get_ActiveDocument(IHostDocument** document) override {
        if (!document) return E_POINTER;
        *document = nullptr;
        AcApDocument* const active = host() ? host()->documents().mdiActiveDocument() : nullptr;
        return active ? handOut<DocumentObject>(document, state(), *active) : E_FAIL;
    }
    HRESULT get_MenuGroups(IHostMenuGroups** groups) override {
        if (!groups) return E_POINTER;
        *groups = nullptr;
        return host() ? handOutMenuGroups(state(), groups) : E_FAIL;
    }
    HRESULT get_Preferences(IHostPreferences** preferences) override {
        if (!preferences) return E_POINTER;
        *preferences = nullptr;
        return host() ? handOut<PreferencesObject>(preferences, state()) : E_FAIL;
    }

private:
    ~ApplicationObject() override = default;
};

} // namespace

HostApplication::HostApplication(Host& host)
    : m_state(std::make_shared<ProgramState>(ProgramState{&host, 0}))
    , m_application(new ApplicationObject(m_state)) {}

HostApplication::~HostApplication() {
    m_state->host = nullptr;
    m_application->Release();
}

IDispatch* HostApplication::GetIDispatch(BOOL addReference) {
    if (addReference) m_application->AddRef();
    return m_application;
}

// One reference is the host's own.
int HostApplication::referencesHeld() const { return m_state->references - 1; }

} // namespace hostkit

CWinApp* acedGetAcadWinApp() {
    hostkit::Host* host = hostkit::Host::current();
    return host ? &host->application() : nullptr;
}

BOOL acedIsMenuGroupLoaded(const wchar_t* group) {
    hostkit::Host* host = hostkit::Host::current();
    return host && group && host->menuGroups().find(group) ? TRUE : FALSE;
}
