// Objects for programs: their references, interfaces and what they know of their host; leaves out what they
// do.
#pragma once

#include "oleauto.h"

#include <memory>
#include <new>
#include <string>
#include <utility>

namespace hostkit {

class Host;

/// What all objects of one application share; it lives as long as the last of them.
struct ProgramState {
    Host* host = nullptr; ///< null when it has gone
    int references = 0;   ///< to all of the objects together
};

/// The common part of an object behind one interface: it comes with one reference and goes with the last.
template <typename Interface, const IID& id>
class ProgramObject : public Interface {
public:
    explicit ProgramObject(std::shared_ptr<ProgramState> state)
        : m_state(std::move(state)) {
        ++m_state->references;
    }
    ProgramObject(const ProgramObject&) = delete;
    ProgramObject& operator=(const ProgramObject&) = delete;

    HRESULT QueryInterface(REFIID wanted, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (wanted == IID_IUnknown)
            *object = static_cast<IUnknown*>(this);
        else if (wanted == IID_IDispatch)
            *object = static_cast<IDispatch*>(this);
        else if (wanted == id)
            *object = static_cast<Interface*>(this);
        else
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG AddRef() override {
        ++m_state->references;
        return ++m_references;
    }
    ULONG Release() override {
        --m_state->references;
        const ULONG left = --m_references;
        if (left == 0) delete this;
        return left;
    }

protected:
    ~ProgramObject() override = default;
    Host* host() const { return m_state->host; }
    const std::shared_ptr<ProgramState>& state() const { return m_state; }

private:
    std::shared_ptr<ProgramState> m_state;
    ULONG m_references = 1;
};

/// Makes an object and hands its one reference to the caller of an operation.
template <typename Object, typename Interface, typename... Arguments>
HRESULT handOut(Interface** place, Arguments&&... arguments) {
    *place = new (std::nothrow) Object(std::forward<Arguments>(arguments)...);
    return *place ? S_OK : E_OUTOFMEMORY;
}

inline HRESULT handOutText(BSTR* place, const std::wstring& text) {
    *place = SysAllocString(text.c_str());
    return *place ? S_OK : E_OUTOFMEMORY;
}

} // namespace hostkit
