// Exceptions from managed code and from starting the runtime, as the host
// catches the framework's: a heap object thrown by pointer, released with
// Delete().
//
//   try {
//     editor.ShowDialog(...);
//   } catch (CManagedException* e) {
//     e->TypeName();   // "System.IO.FileNotFoundException"
//     e->Text();       // the managed exception's Message
//     e->Delete();
//   }
//
// GetErrorMessage gives "TypeName: Message". A managed exception that
// passes the bridge keeps its full type name and message; nothing else of
// it crosses.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/exceptions.h>
#include <cadtools/export.h>

class CADTOOLS_API CManagedException : public CException {
 public:
  CManagedException(CString typeName, CString message);

  // The managed exception's full type name ("System.InvalidCastException").
  const CString& TypeName() const noexcept { return m_strTypeName; }
  // The managed exception's Message.
  const CString& Text() const noexcept { return m_strMessage; }

 protected:
  const WCHAR* Message() const noexcept override;

 private:
  CString m_strTypeName;
  CString m_strMessage;
  CString m_strFull;
};

// The managed runtime is not there or could not be started. The reason says
// which step failed, with the system's code where there is one.
class CADTOOLS_API CRuntimeUnavailableException : public CNotSupportedException {
 public:
  explicit CRuntimeUnavailableException(CString reason);

  const CString& Reason() const noexcept { return m_strReason; }

 protected:
  const WCHAR* Message() const noexcept override;

 private:
  CString m_strReason;
};
