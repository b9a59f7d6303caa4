#include <cadtools/compat/exceptions.h>

#include <memory>

CObject::~CObject() = default;

void CException::Delete() noexcept {
  if (m_bAutoDelete) {
    // The library throws heap objects owned by the catcher; this is where
    // that ownership ends.
    std::unique_ptr<CException>{this};
  }
}

BOOL CException::GetErrorMessage(LPWSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const {
  if (pnHelpContext != nullptr) {
    *pnHelpContext = 0;
  }
  if (lpszError == nullptr || nMaxError == 0) {
    return FALSE;
  }
  const WCHAR* text = Message();
  UINT i = 0;
  for (; i + 1 < nMaxError && text[i] != 0; ++i) {
    lpszError[i] = text[i];
  }
  lpszError[i] = 0;
  return TRUE;
}

const WCHAR* CException::Message() const noexcept { return CADTOOLS_WIDE("An unknown error has occurred."); }

const WCHAR* CInvalidArgException::Message() const noexcept {
  return CADTOOLS_WIDE("Encountered an improper argument.");
}

const WCHAR* CNotSupportedException::Message() const noexcept {
  return CADTOOLS_WIDE("Unsupported operation was attempted.");
}

const WCHAR* CMemoryException::Message() const noexcept { return CADTOOLS_WIDE("Out of memory."); }

namespace cadtools {

namespace {
template <class E>
[[noreturn]] void ThrowHeap() {
  throw std::make_unique<E>().release();
}
}  // namespace

void ThrowInvalidArg() { ThrowHeap<CInvalidArgException>(); }
void ThrowNotSupported() { ThrowHeap<CNotSupportedException>(); }
void ThrowMemory() { ThrowHeap<CMemoryException>(); }

}  // namespace cadtools
