#include <cadtools/compat/coblist.h>

CObList::CObList(INT_PTR nBlockSize) { static_cast<void>(nBlockSize); }

CObList::~CObList() = default;

CObList::Node* CObList::Checked(POSITION position) const {
  if (position == nullptr || position == BEFORE_START_POSITION) cadtools::ThrowInvalidArg();
  Node* n = reinterpret_cast<Node*>(position);
  if (!n->in_use) cadtools::ThrowInvalidArg();
  return n;
}

CObList::Node* CObList::NewNode(CObject* data, Node* prev, Node* next) {
  Node* n = m_free;
  if (n != nullptr) {
    m_free = n->next;
  } else {
    n = &m_nodes.emplace_back();
  }
  *n = Node{prev, next, data, true};
  (prev != nullptr ? prev->next : m_head) = n;
  (next != nullptr ? next->prev : m_tail) = n;
  ++m_count;
  return n;
}

void CObList::Unlink(Node* n) {
  (n->prev != nullptr ? n->prev->next : m_head) = n->next;
  (n->next != nullptr ? n->next->prev : m_tail) = n->prev;
  *n = Node{nullptr, m_free, nullptr, false};
  m_free = n;
  --m_count;
}

CObject*& CObList::GetHead() { return Checked(ToPosition(m_head))->data; }
const CObject* CObList::GetHead() const { return Checked(ToPosition(m_head))->data; }
CObject*& CObList::GetTail() { return Checked(ToPosition(m_tail))->data; }
const CObject* CObList::GetTail() const { return Checked(ToPosition(m_tail))->data; }

CObject* CObList::RemoveHead() {
  Node* n = Checked(ToPosition(m_head));
  CObject* data = n->data;
  Unlink(n);
  return data;
}

CObject* CObList::RemoveTail() {
  Node* n = Checked(ToPosition(m_tail));
  CObject* data = n->data;
  Unlink(n);
  return data;
}

POSITION CObList::AddHead(CObject* newElement) { return ToPosition(NewNode(newElement, nullptr, m_head)); }
POSITION CObList::AddTail(CObject* newElement) { return ToPosition(NewNode(newElement, m_tail, nullptr)); }

void CObList::AddHead(CObList* pNewList) {
  if (pNewList == nullptr) cadtools::ThrowInvalidArg();
  // Counted first: the list may be this one, growing as we go.
  Node* n = pNewList->m_tail;
  for (INT_PTR left = pNewList->m_count; left > 0; --left, n = n->prev) AddHead(n->data);
}

void CObList::AddTail(CObList* pNewList) {
  if (pNewList == nullptr) cadtools::ThrowInvalidArg();
  Node* n = pNewList->m_head;
  for (INT_PTR left = pNewList->m_count; left > 0; --left, n = n->next) AddTail(n->data);
}

void CObList::RemoveAll() noexcept {
  m_nodes.clear();
  m_head = m_tail = m_free = nullptr;
  m_count = 0;
}

POSITION CObList::GetHeadPosition() const noexcept { return ToPosition(m_head); }
POSITION CObList::GetTailPosition() const noexcept { return ToPosition(m_tail); }

CObject*& CObList::GetNext(POSITION& rPosition) {
  Node* n = Checked(rPosition);
  rPosition = ToPosition(n->next);
  return n->data;
}
const CObject* CObList::GetNext(POSITION& rPosition) const {
  return const_cast<CObList*>(this)->GetNext(rPosition);
}

CObject*& CObList::GetPrev(POSITION& rPosition) {
  Node* n = Checked(rPosition);
  rPosition = ToPosition(n->prev);
  return n->data;
}
const CObject* CObList::GetPrev(POSITION& rPosition) const {
  return const_cast<CObList*>(this)->GetPrev(rPosition);
}

CObject*& CObList::GetAt(POSITION position) { return Checked(position)->data; }
const CObject* CObList::GetAt(POSITION position) const { return Checked(position)->data; }
void CObList::SetAt(POSITION pos, CObject* newElement) { Checked(pos)->data = newElement; }
void CObList::RemoveAt(POSITION position) { Unlink(Checked(position)); }

POSITION CObList::InsertBefore(POSITION position, CObject* newElement) {
  if (position == nullptr) return AddHead(newElement);
  Node* at = Checked(position);
  return ToPosition(NewNode(newElement, at->prev, at));
}

POSITION CObList::InsertAfter(POSITION position, CObject* newElement) {
  if (position == nullptr) return AddTail(newElement);
  Node* at = Checked(position);
  return ToPosition(NewNode(newElement, at, at->next));
}

POSITION CObList::Find(CObject* searchValue, POSITION startAfter) const {
  for (Node* n = startAfter == nullptr ? m_head : Checked(startAfter)->next; n != nullptr; n = n->next) {
    if (n->data == searchValue) return ToPosition(n);
  }
  return nullptr;
}

POSITION CObList::FindIndex(INT_PTR nIndex) const noexcept {
  if (nIndex < 0 || nIndex >= m_count) return nullptr;
  Node* n = m_head;
  for (; nIndex > 0; --nIndex) n = n->next;
  return ToPosition(n);
}
