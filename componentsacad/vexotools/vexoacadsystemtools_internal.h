#pragma once

#include "aced.h"
#include "hostapplication.h"
#include "moduledatabase.h"

#include <cstdlib>

/// What the topic files of the system tools share.
namespace vexo {

/// The value of a system variable for a scope, and what it holds.
class Variable {
public:
    explicit Variable(const wchar_t* name)
        : m_isRead(acedGetVar(name, &m_record) == RTNORM) {}
    ~Variable() {
        if (has(RTSTR)) std::free(m_record.resval.rstring);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

    /// It could be read, and is of that type.
    bool has(short type) const { return m_isRead && m_record.restype == type; }
    const ads_u_val& value() const { return m_record.resval; }
    /// Null when it is no text.
    const wchar_t* text() const { return has(RTSTR) ? m_record.resval.rstring : nullptr; }

private:
    resbuf m_record{};
    bool m_isRead;
};

/// An interface for a scope: released with it.
template <typename T>
class Held {
public:
    Held() = default;
    ~Held() {
        if (m_interface) m_interface->Release();
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

    /// Where a call puts what it hands out; once a holder.
    T** receive() { return &m_interface; }
    /// The reference goes to the caller.
    T* detach() {
        T* const given = m_interface;
        m_interface = nullptr;
        return given;
    }
    T* get() const { return m_interface; }
    T* operator->() const { return m_interface; }
    explicit operator bool() const { return m_interface != nullptr; }

private:
    T* m_interface = nullptr;
};

/// The command stack by its entry in the host's registry; null when there is none.
AcEdCommandStack* commandStack();

/// Takes the host's application for a scope. False where any step fails.
bool takeApplication(Held<IHostApplication>& application);

/// True when the expression goes into a buffer of 512 characters. False, and told on the command line, for a
/// longer one: cut, it would be another expression.
bool canQueue(const CString& expression);

} // namespace vexo
