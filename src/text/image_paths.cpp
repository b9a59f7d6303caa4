// Names of image files and folders and of full path names.
#include <cadtools/text_tools.h>

namespace cadtools {

namespace {

// The stem every image name shares: name + " - Image" without the hyphens
// and spaces that an empty name leaves at the ends.
CString ImageStem(const CString& name) {
  return TextEditing::TrimChar(name + CADTOOLS_WIDE(" - Image"), u'-');
}

CString JoinImagePath(const CString& a, const CString& b, const CString& stem, int number, const CString& tail) {
  CString result;
  result.Format(CADTOOLS_WIDE("%s%s%s%ld%s"), a, b, stem, static_cast<LONG>(number), tail);
  return result;
}

}  // namespace

CString CodePages::CreateImageFolderPath(CString a, CString b, CString name, int number, CString tail) {
  return JoinImagePath(a, b, ImageStem(name), number, tail);
}

CString CodePages::CreateImagePath(CString a, CString b, CString name, CString variant, int number, CString tail) {
  name.Trim();
  variant.Trim();
  if (!variant.IsEmpty() && variant != name) name = name + CADTOOLS_WIDE(" - ") + variant;
  return JoinImagePath(a, b, ImageStem(name), number, tail);
}

CString CodePages::CreateFullPathName(CString a, CString b, CString name, CString variant, CString tail) {
  const CString stem = TextEditing::TrimChar(name + CADTOOLS_WIDE(" - ") + variant, u'-');
  CString result;
  result.Format(CADTOOLS_WIDE("%s%s%s%s"), a, b, stem, tail);
  return result;
}

}  // namespace cadtools
