// The framework's exception classes, thrown as the host expects them.
//
// Host code catches `CException*` and releases the object with Delete(), so
// the library throws a pointer to a heap object, never a value:
//
//   try { arr.GetAt(99); }
//   catch (CException* e) { e->Delete(); }
//
// Use cadtools::ThrowInvalidArg() and friends to raise them; they allocate
// the object so that Delete() can release it.
#pragma once

#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

class CADTOOLS_API CObject {
 public:
  CObject() = default;
  CObject(const CObject&) = default;
  CObject& operator=(const CObject&) = default;
  virtual ~CObject();
};

class CADTOOLS_API CException : public CObject {
 public:
  // bAutoDelete: whether Delete() destroys the object (true for every
  // exception the library throws, which lives on the heap).
  explicit CException(BOOL bAutoDelete = TRUE) noexcept : m_bAutoDelete(bAutoDelete) {}

  // Releases a caught exception. Does nothing for an object that does not
  // own itself (one made on the stack with bAutoDelete FALSE).
  void Delete() noexcept;

  // Copies the message, NUL-terminated and cut to nMaxError units, into
  // lpszError. Returns TRUE when a message was written.
  virtual BOOL GetErrorMessage(LPWSTR lpszError, UINT nMaxError, PUINT pnHelpContext = nullptr) const;

  BOOL m_bAutoDelete;

 protected:
  // The message text, in UTF-16. Each class has its own.
  virtual const WCHAR* Message() const noexcept;
};

// An argument out of range: an index past the end of a string or an array.
class CADTOOLS_API CInvalidArgException : public CException {
 public:
  using CException::CException;

 protected:
  const WCHAR* Message() const noexcept override;
};

// An operation the object does not support.
class CADTOOLS_API CNotSupportedException : public CException {
 public:
  using CException::CException;

 protected:
  const WCHAR* Message() const noexcept override;
};

// Memory could not be allocated.
class CADTOOLS_API CMemoryException : public CException {
 public:
  using CException::CException;

 protected:
  const WCHAR* Message() const noexcept override;
};

namespace cadtools {

// Throw a heap-allocated exception of the given class as a pointer.
[[noreturn]] CADTOOLS_API void ThrowInvalidArg();
[[noreturn]] CADTOOLS_API void ThrowNotSupported();
[[noreturn]] CADTOOLS_API void ThrowMemory();

}  // namespace cadtools
