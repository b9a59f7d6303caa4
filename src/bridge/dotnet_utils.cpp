#include <cadtools/bridge/dotnet_utils.h>

CString CDotNetUtils::DotNetString2CString(const cadtools::bridge::Ref<System::String>& a_strText) {
  if (a_strText.IsNull()) return CString();
  return cadtools::bridge::Runtime::Get().ReadString(a_strText, true);
}

cadtools::bridge::Ref<System::String> CDotNetUtils::CString2DotNetString(CString a_strText) {
  // The host builds the managed string from the zero-terminated buffer.
  const cadtools::WStringView text(a_strText.GetString());
  return cadtools::bridge::Ref<System::String>(cadtools::bridge::Runtime::Get().NewString(text));
}
