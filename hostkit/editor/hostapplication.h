// Stand-in for the host's interfaces for programs. Covers the application with its active document, menu groups, toolbars and the system page of its preferences; leaves out drawing by program and events.
#pragma once

#include "oleauto.h"

// Every interface that an operation hands out belongs to its receiver, who gives it back with Release; every
// text likewise with SysFreeString. Indices count from 0. Operations give S_OK, or
//   E_POINTER     a place for the result is null (nothing is looked at then),
//   E_INVALIDARG  an index is out of range,
//   E_FAIL        what the object stands for is gone: its host, its document, its menu group; or there is
//                 none: no document is open.
// The place for a result is null or untouched on failure. Objects that outlive their host stay good to call.

class IHostToolbar : public IDispatch {
public:
    virtual HRESULT get_Name(BSTR* name) = 0;
    virtual HRESULT get_Visible(VARIANT_BOOL* visible) = 0;
    virtual HRESULT put_Visible(VARIANT_BOOL visible) = 0;
    /// Of its buttons.
    virtual HRESULT get_Count(LONG* count) = 0;
};

class IHostToolbars : public IDispatch {
public:
    virtual HRESULT get_Count(LONG* count) = 0;
    virtual HRESULT Item(LONG index, IHostToolbar** toolbar) = 0;
};

class IHostMenuGroup : public IDispatch {
public:
    virtual HRESULT get_Name(BSTR* name) = 0;
    virtual HRESULT get_Toolbars(IHostToolbars** toolbars) = 0;
};

/// In the order of loading.
class IHostMenuGroups : public IDispatch {
public:
    virtual HRESULT get_Count(LONG* count) = 0;
    virtual HRESULT Item(LONG index, IHostMenuGroup** group) = 0;
};

/// The system page.
class IHostPreferencesSystem : public IDispatch {
public:
    /// Whether the host asks for a drawing when it starts; the variable STARTUP.
    virtual HRESULT get_EnableStartupDialog(VARIANT_BOOL* enabled) = 0;
    virtual HRESULT put_EnableStartupDialog(VARIANT_BOOL enabled) = 0;
};

class IHostPreferences : public IDispatch {
public:
    virtual HRESULT get_System(IHostPreferencesSystem** page) = 0;
};

class IHostDocument : public IDispatch {
public:
    /// The document's file as it was given; the empty text for a new drawing.
    virtual HRESULT get_FullName(BSTR* name) = 0;
    /// What is changed from here to the end of the mark is one step for undo, over the ends of commands too.
    /// Marks nest; the outermost one counts.
    virtual HRESULT StartUndoMark() = 0;
    /// E_FAIL where none was started.
    virtual HRESULT EndUndoMark() = 0;
};

class IHostApplication : public IDispatch {
public:
    virtual HRESULT get_ActiveDocument(IHostDocument** document) = 0;
    virtual HRESULT get_MenuGroups(IHostMenuGroups** groups) = 0;
    virtual HRESULT get_Preferences(IHostPreferences** preferences) = 0;
};

inline constexpr IID IID_IHostApplication = {
    0x6B1F3A10, 0x2C47, 0x4E0B, {0x9D, 1, 0x5E, 0xA2, 0x77, 0xC4, 0x31, 1}};
inline constexpr IID IID_IHostDocument = {
    0x6B1F3A10, 0x2C47, 0x4E0B, {0x9D, 1, 0x5E, 0xA2, 0x77, 0xC4, 0x31, 2}};
inline constexpr IID IID_IHostPreferences = {
    0x6B1F3A10, 0x2C47, 0x4E0B, {0x9D, 1, 0x5E, 0xA2, 0x77, 0xC4, 0x31, 3}};
inline constexpr IID IID_IHostPreferencesSystem = {
    0x6B1F3A10, 0x2C47, 0x4E0B, {0x9D, 1, 0x5E, 0xA2, 0x77, 0xC4, 0x31, 4}};
inline constexpr IID IID_IHostMenuGroups = {
    0x6B1F3A10, 0x2C47, 0x4E0B, {0x9D, 1, 0x5E, 0xA2, 0x77, 0xC4, 0x31, 5}};
inline constexpr IID IID_IHostMenuGroup = {
    0x6B1F3A10, 0x2C47, 0x4E0B, {0x9D, 1, 0x5E, 0xA2, 0x77, 0xC4, 0x31, 6}};
inline constexpr IID IID_IHostToolbars = {
    0x6B1F3A10, 0x2C47, 0x4E0B, {0x9D, 1, 0x5E, 0xA2, 0x77, 0xC4, 0x31, 7}};
inline constexpr IID IID_IHostToolbar = {
    0x6B1F3A10, 0x2C47, 0x4E0B, {0x9D, 1, 0x5E, 0xA2, 0x77, 0xC4, 0x31, 8}};
