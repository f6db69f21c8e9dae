#include "cstringlist.h"

#include <algorithm>

const CString& CStringArray::GetAt(int index) const {
    static const CString empty;
    return index >= 0 && index < GetSize() ? items_[static_cast<std::size_t>(index)] : empty;
}

CString& CStringArray::operator[](int index) {
    if (index >= 0 && index < GetSize()) return items_[static_cast<std::size_t>(index)];
    outside_.Empty(); // whatever was written to the element that is not there
    return outside_;
}

void CStringArray::SetAt(int index, const CString& text) {
    if (index >= 0 && index < GetSize()) items_[static_cast<std::size_t>(index)] = text;
}

void CStringArray::SetAtGrow(int index, const CString& text) {
    if (index < 0) return;
    CString copy(text); // text may be an element that moves
    if (index >= GetSize()) SetSize(index + 1);
    items_[static_cast<std::size_t>(index)] = std::move(copy);
}

int CStringArray::Add(const CString& text) {
    items_.push_back(CString(text));
    return GetSize() - 1;
}

void CStringArray::InsertAt(int index, const CString& text) {
    if (index < 0) return;
    if (index >= GetSize()) return SetAtGrow(index, text);
    items_.insert(items_.begin() + index, CString(text));
}

void CStringArray::RemoveAt(int index, int count) {
    if (index < 0 || index >= GetSize() || count <= 0) return;
    items_.erase(items_.begin() + index, items_.begin() + index + std::min(count, GetSize() - index));
}

void CStringArray::SetSize(int size) { items_.resize(size > 0 ? static_cast<std::size_t>(size) : 0); }

void CStringArray::Append(const CStringArray& other) {
    const std::vector<CString> copy(other.items_);
    items_.insert(items_.end(), copy.begin(), copy.end());
}

CStringList::~CStringList() { RemoveAll(); }

CStringList::Node* CStringList::insert(const CString& text, Node* previous, Node* next) {
    Node* node = new Node{text, previous, next};
    (previous ? previous->next : head_) = node;
    (next ? next->previous : tail_) = node;
    ++count_;
    return node;
}

POSITION CStringList::AddHead(const CString& text) { return insert(text, nullptr, head_); }
POSITION CStringList::AddTail(const CString& text) { return insert(text, tail_, nullptr); }

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
    (node->previous ? node->previous->next : head_) = node->next;
    (node->next ? node->next->previous : tail_) = node->previous;
    --count_;
    delete node;
}

CString CStringList::RemoveHead() {
    if (!head_) return {};
    CString text = std::move(head_->text);
    RemoveAt(head_);
    return text;
}

CString CStringList::RemoveTail() {
    if (!tail_) return {};
    CString text = std::move(tail_->text);
    RemoveAt(tail_);
    return text;
}

void CStringList::RemoveAll() {
    for (Node* node = head_; node;) {
        Node* const next = node->next;
        delete node;
        node = next;
    }
    head_ = nullptr;
    tail_ = nullptr;
    count_ = 0;
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
    Node* node = startAfter ? static_cast<Node*>(startAfter)->next : head_;
    while (node && node->text != text) node = node->next;
    return node;
}

POSITION CStringList::FindIndex(int index) const {
    if (index < 0) return nullptr;
    Node* node = head_;
    for (; node && index > 0; --index) node = node->next;
    return node;
}
