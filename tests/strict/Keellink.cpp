// The strict link library. Its two readers of incoming links know the short argument lists: on
// a machine where the callee removes the arguments they remove four and three.
#include "Forward.h"
#include "quillmar/Links.h"

// The contract's forms get names under which nobody looks them up.
#define Link_GetLinkFrom FullGetLinkFrom
#define Link_GetLinkFrom2 FullGetLinkFrom2
QM_LINK_FUNCTIONS(STRICT_FORWARD)
#undef Link_GetLinkFrom
#undef Link_GetLinkFrom2

QM_EXTERN_C QM_EXPORT int QM_STDCALL Link_GetLinkFrom(const char* protocolId, int index,
                                                      char* first, char* second) {
  return FullGetLinkFrom(protocolId, index, first, second, nullptr, nullptr);
}

QM_EXTERN_C QM_EXPORT int QM_STDCALL Link_GetLinkFrom2(const char* protocolId, const char* linkName,
                                                       char* text) {
  return FullGetLinkFrom2(protocolId, linkName, text, nullptr, nullptr);
}
