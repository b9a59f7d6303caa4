// Making a managed control and putting it where its placeholder was.
#include <cadtools/bridge/winforms_control.h>
#include <cadtools/compat/exceptions.h>

namespace cadtools::bridge::detail {

Object CreateHostedControl(WStringView type, ui::Window& parent, int placeholderId) {
  if (!parent.HasItem(placeholderId)) ThrowNotSupported();
  Object control = Runtime::Get().Create(type);
  std::intptr_t window = 0;
#if defined(_WIN32)
  // A Windows Forms control makes its window when asked for it.
  window = static_cast<std::intptr_t>(control.Get(CADTOOLS_WIDE("Handle")).AsInt());
  if (window == 0) ThrowNotSupported();
#endif
  if (!parent.ReplaceItem(placeholderId, window)) ThrowNotSupported();
  return control;
}

}  // namespace cadtools::bridge::detail
