// Stand-in for the host's string collections. Covers CStringArray and CStringList with positions; leaves out serialisation and growth control.
#pragma once

#include "cstring.h"

#include <vector>

/// An array of texts that grows. An index outside is answered with the empty text and changes nothing.
class CStringArray {
public:
    int GetSize() const { return static_cast<int>(m_items.size()); }
    int GetCount() const { return GetSize(); }
    bool IsEmpty() const { return m_items.empty(); }
    const CString& GetAt(int index) const;
    CString& operator[](int index);
    const CString& operator[](int index) const { return GetAt(index); }
    void SetAt(int index, const CString& text);
    void SetAtGrow(int index, const CString& text);
    /// The index of the new element.
    int Add(const CString& text);
    void InsertAt(int index, const CString& text);
    void RemoveAt(int index, int count = 1);
    void RemoveAll() { m_items.clear(); }
    void SetSize(int size);
    void Copy(const CStringArray& other) { m_items = other.m_items; }
    void Append(const CStringArray& other);

private:
    std::vector<CString> m_items;
    CString m_outside;
};

/// A place in a list; null is no place.
using POSITION = void*;

/// A list of texts, walked by positions: `for (POSITION at = list.GetHeadPosition(); at;) list.GetNext(at)`.
/// A position stays good until its element is removed.
class CStringList {
public:
    CStringList() = default;
    CStringList(const CStringList&) = delete;
    CStringList& operator=(const CStringList&) = delete;
    ~CStringList();

    int GetCount() const { return m_count; }
    int GetSize() const { return m_count; }
    bool IsEmpty() const { return m_count == 0; }
    /// The list is not empty.
    const CString& GetHead() const { return m_head->text; }
    const CString& GetTail() const { return m_tail->text; }
    POSITION AddHead(const CString& text);
    POSITION AddTail(const CString& text);
    CString RemoveHead();
    CString RemoveTail();
    void RemoveAll();
    POSITION GetHeadPosition() const { return m_head; }
    POSITION GetTailPosition() const { return m_tail; }
    CString& GetNext(POSITION& position);
    const CString& GetNext(POSITION& position) const;
    CString& GetPrev(POSITION& position);
    CString& GetAt(POSITION position) { return static_cast<Node*>(position)->text; }
    const CString& GetAt(POSITION position) const { return static_cast<Node*>(position)->text; }
    void SetAt(POSITION position, const CString& text) { static_cast<Node*>(position)->text = text; }
    void RemoveAt(POSITION position);
    POSITION InsertBefore(POSITION position, const CString& text);
    POSITION InsertAfter(POSITION position, const CString& text);
    /// From the place after startAfter, or the head; null when the text is not there.
    POSITION Find(const CString& text, POSITION startAfter = nullptr) const;
    POSITION FindIndex(int index) const;

private:
    struct Node {
        CString text;
        Node* previous;
        Node* next;
    };
    Node* insert(const CString& text, Node* previous, Node* next);

    Node* m_head = nullptr;
    Node* m_tail = nullptr;
    int m_count = 0;
};
