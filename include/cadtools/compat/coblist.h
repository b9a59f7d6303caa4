// CObList: the framework's doubly linked list of CObject pointers. The list
// does not own the objects.
//
//   CObList list;
//   POSITION p = list.AddTail(&a);   // a
//   list.AddHead(&b);                // b a
//   list.InsertAfter(p, &c);         // b a c
//   for (POSITION pos = list.GetHeadPosition(); pos != nullptr;)
//     use(list.GetNext(pos));        // b, a, c
//   list.RemoveAt(p);                // b c
//   list.GetCount();                 // 2
//
// A POSITION stays valid until its element is removed. Where the framework
// asserts (the head or tail of an empty list, a null POSITION), the list
// raises CInvalidArgException* instead, and so it does for the POSITION of
// an element already removed (while the list has not been emptied since).
// InsertBefore and InsertAfter with a null POSITION add at the head and at
// the tail, as in the framework. Lists cannot be copied.
#pragma once

#include <cadtools/compat/exceptions.h>
#include <cadtools/compat/position.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

#include <deque>

class CADTOOLS_API CObList : public CObject {
 public:
  // nBlockSize is accepted for compatibility; storage grows as needed.
  explicit CObList(INT_PTR nBlockSize = 10);
  CObList(const CObList&) = delete;
  CObList& operator=(const CObList&) = delete;
  ~CObList() override;

  INT_PTR GetCount() const noexcept { return m_count; }
  INT_PTR GetSize() const noexcept { return m_count; }
  BOOL IsEmpty() const noexcept { return m_count == 0; }

  CObject*& GetHead();
  const CObject* GetHead() const;
  CObject*& GetTail();
  const CObject* GetTail() const;
  CObject* RemoveHead();
  CObject* RemoveTail();
  POSITION AddHead(CObject* newElement);
  POSITION AddTail(CObject* newElement);
  // Add the elements of another list (or of this one), keeping their order.
  // Without these a CObList* would be added as a single element.
  void AddHead(CObList* pNewList);
  void AddTail(CObList* pNewList);
  void RemoveAll() noexcept;

  POSITION GetHeadPosition() const noexcept;
  POSITION GetTailPosition() const noexcept;
  // The element at rPosition; rPosition moves to the next (previous) one,
  // nullptr past the end.
  CObject*& GetNext(POSITION& rPosition);
  const CObject* GetNext(POSITION& rPosition) const;
  CObject*& GetPrev(POSITION& rPosition);
  const CObject* GetPrev(POSITION& rPosition) const;

  CObject*& GetAt(POSITION position);
  const CObject* GetAt(POSITION position) const;
  void SetAt(POSITION pos, CObject* newElement);
  void RemoveAt(POSITION position);
  POSITION InsertBefore(POSITION position, CObject* newElement);
  POSITION InsertAfter(POSITION position, CObject* newElement);

  // The first element equal to searchValue after startAfter (from the head
  // when null); nullptr when there is none.
  POSITION Find(CObject* searchValue, POSITION startAfter = nullptr) const;
  // The nIndex-th element from the head; nullptr when out of range.
  POSITION FindIndex(INT_PTR nIndex) const noexcept;

 private:
  struct Node {
    Node* prev = nullptr;
    Node* next = nullptr;
    CObject* data = nullptr;
    bool in_use = false;
  };

  Node* Checked(POSITION position) const;
  Node* NewNode(CObject* data, Node* prev, Node* next);
  void Unlink(Node* n);
  static POSITION ToPosition(Node* n) noexcept { return reinterpret_cast<POSITION>(n); }

  // Nodes live in a deque, whose elements never move; removed ones are
  // kept on a free list for reuse.
  std::deque<Node> m_nodes;
  Node* m_head = nullptr;
  Node* m_tail = nullptr;
  Node* m_free = nullptr;
  INT_PTR m_count = 0;
};
