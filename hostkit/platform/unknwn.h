// Stand-in for the host's interfaces by reference count. Covers interface ids, IUnknown and IDispatch; leaves out late binding, class factories and marshalling.
#pragma once

#include "windowstypes.h"

#include <cstdint>

/// Tells an interface from all others.
struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
    constexpr bool operator==(const GUID&) const = default;
};
using IID = GUID;
using REFIID = const IID&;

inline constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002u);

inline constexpr IID IID_IUnknown = {0x00000000, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IDispatch = {0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

/// An object that lives as long as someone refers to it. Every interface that a call hands out carries one
/// reference, which its receiver gives back with Release; nobody deletes one.
class IUnknown {
public:
    /// S_OK and a further reference; E_NOINTERFACE, and null, for an id that the object does not know;
    /// E_POINTER for null.
    virtual HRESULT QueryInterface(REFIID id, void** object) = 0;
    /// Both give the number of references that are left.
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;

protected:
    virtual ~IUnknown() = default;
};

/// An object of an application's interface for programs. Its operations stand in the interfaces that
/// QueryInterface gives.
class IDispatch : public IUnknown {};

using LPUNKNOWN = IUnknown*;
using LPDISPATCH = IDispatch*;
