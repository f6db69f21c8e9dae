#include "cstringlist.h"

#include <algorithm>

const CString& CStringArray::GetAt(int index) const {
    static const CString empty;
    return index >= 0 && index < GetSize() ? m_items[static_cast<std::size_t>(index)] : empty;
}

CString& CStringArray::operator[](int index) {
    if (index >= 0 && index < GetSize()) return m_items[static_cast<std::size_t>(index)];
    m_outside.Empty(); // whatever was written to the element that is not there
    return m_outside;
}

void CStringArray::SetAt(int index, const CString& text) {
    if (index >= 0 && index < GetSize()) m_items[static_cast<std::size_t>(index)] = text;
}

void CStringArray::SetAtGrow(int index, const CString& text) {
    if (index < 0) return;
    CString copy(text); // text may be an element that moves
    if (index >= GetSize()) SetSize(index + 1);
    m_items[static_cast<std::size_t>(index)] = std::move(copy);
}

int CStringArray::Add(const CString& text) {
    m_items.push_back(CString(text));
    return GetSize() - 1;
}

void CStringArray::InsertAt(int index, const CString& text) {
    if (index < 0) return;
    if (index >= GetSize()) return SetAtGrow(index, text);
    m_items.insert(m_items.begin() + index, CString(text));
}

void CStringArray::RemoveAt(int index, int count) {
    if (index < 0 || index >= GetSize() || count <= 0) return;
    m_items.erase(m_items.begin() + index, m_items.begin() + index + std::min(count, GetSize() - index));
}

void CStringArray::SetSize(int size) { m_items.resize(size > 0 ? static_cast<std::size_t>(size) : 0); }

void CStringArray::Append(const CStringArray& other) {
    const std::vector<CString> copy(other.m_items);
    m_items.insert(m_items.end(), copy.begin(), copy.end());
}

CStringList::~CStringList() { RemoveAll(); }

CStringList::Node* CStringList::insert(const CString& text, Node* previous, Node* next) {
    Node* node = new Node{text, previous, next};
    (previous ? previous->next : m_head) = node;
    (next ? next->previous : m_tail) = node;
    ++m_count;
    return node;
}

POSITION CStringList::AddHead(const CString& text) { return insert(text, nullptr, m_head); }
POSITION CStringList::AddTail(const CString& text) { return insert(text, m_tail, nullptr); }

POSITION CStringList::InsertBefore(POSITION position, const CString& text) {
    if (!position) return AddHead(text);
    Node* node = static_cast<Node*>(position);
    return insert(text, node->previous, node);
}

POSITION CStringList::InsertAfter(POSITION position, const CString& text) {
    if (!position) return AddTail(text);
    Node* node = static_cast<Node*>(position);
    return insert(text, node, node->next);
}

void CStringList::RemoveAt(POSITION position) {
    if (!position) return;
    Node* node = static_cast<Node*>(position);
    (node->previous ? node->previous->next : m_head) = node->next;
    (node->next ? node->next->previous : m_tail) = node->previous;
    --m_count;
    delete node;
}

CString CStringList::RemoveHead() {
    if (!m_head) return {};
    CString text = std::move(m_head->text);
    RemoveAt(m_head);
    return text;
}

CString CStringList::RemoveTail() {
    if (!m_tail) return {};
    CString text = std::move(m_tail->text);
    RemoveAt(m_tail);
    return text;
}

void CStringList::RemoveAll() {
    for (Node* node = m_head; node;) {
        Node* const next = node->next;
        delete node;
        node = next;
    }
    m_head = nullptr;
    m_tail = nullptr;
    m_count = 0;
}

CString& CStringList::GetNext(POSITION& position) {
    Node* node = static_cast<Node*>(position);
    position = node->next;
    return node->text;
}

const CString& CStringList::GetNext(POSITION& position) const {
    const Node* node = static_cast<const Node*>(position);
    position = node->next;
    return node->text;
}

CString& CStringList::GetPrev(POSITION& position) {
    Node* node = static_cast<Node*>(position);
    position = node->previous;
    return node->text;
}

POSITION CStringList::Find(const CString& text, POSITION startAfter) const {
    Node* node = startAfter ? static_cast<Node*>(startAfter)->next : m_head;
    while (node && node->text != text) node = node->next;
    return node;
}

POSITION CStringList::FindIndex(int index) const {
    if (index < 0) return nullptr;
    Node* node = m_head;
    for (; node && index > 0; --index) node = node->next;
    return node;
}
