#include <cadtools/bridge/managed_exception.h>

#include <utility>

CManagedException::CManagedException(CString typeName, CString message)
    : m_strTypeName(std::move(typeName)), m_strMessage(std::move(message)) {
  m_strFull = m_strTypeName + CADTOOLS_WIDE(": ") + m_strMessage;
}

const WCHAR* CManagedException::Message() const noexcept { return m_strFull.GetString(); }

CRuntimeUnavailableException::CRuntimeUnavailableException(CString reason) : m_strReason(std::move(reason)) {}

const WCHAR* CRuntimeUnavailableException::Message() const noexcept { return m_strReason.GetString(); }
