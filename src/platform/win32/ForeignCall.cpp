#include "platform/ForeignCall.h"

#include <array>
#include <bit>
#include <vector>

// Written in assembly because the compiler counts on the stack pointer that a call leaves behind.
// Offsets from ebp: 8 function, 12 words, 16 count.
//  - Eight zero words lie above the arguments: a callee with a longer list reads zeros there, and
//    when it removes more than was pushed, the stack pointer stays below what this frame keeps.
//  - The arguments begin on a 16-byte boundary, as compilers of callees may expect.
//  - They are pushed one by one, so that a long list touches the stack page after page.
asm(R"(
  .intel_syntax noprefix
  .text
  .p2align 4
  .globl _QuillmarCallForeign
  .def _QuillmarCallForeign; .scl 2; .type 32; .endef
_QuillmarCallForeign:
  .cfi_startproc
  push ebp
  .cfi_def_cfa_offset 8
  .cfi_offset ebp, -8
  mov ebp, esp
  .cfi_def_cfa_register ebp
  push ebx
  .cfi_offset ebx, -12
  push esi
  .cfi_offset esi, -16
  push edi
  .cfi_offset edi, -20
  mov ecx, dword ptr [ebp + 16]
  mov edx, dword ptr [ebp + 12]
  lea eax, [ecx * 4 + 32]
  mov ebx, esp
  sub ebx, eax
  and ebx, 15
  sub esp, ebx
  mov eax, 8
1:
  push 0
  dec eax
  jnz 1b
  jmp 3f
2:
  push dword ptr [edx + ecx * 4]
3:
  sub ecx, 1
  jnc 2b
  cld
  call dword ptr [ebp + 8]
  lea esp, [ebp - 12]
  pop edi
  pop esi
  pop ebx
  pop ebp
  .cfi_def_cfa esp, 4
  ret
  .cfi_endproc
  .att_syntax prefix
)");

extern "C" int QuillmarCallForeign(void* function, const std::uintptr_t* words, std::size_t count);

namespace quillmar::platform {

int CallForeign(void* function, const std::uintptr_t* words, std::size_t count) {
  return QuillmarCallForeign(function, words, count);
}

// A real takes two words, the lower half first.
int CallForeign(void* function, std::span<const ForeignArgument> arguments) {
  std::vector<std::uintptr_t> words;
  for (const ForeignArgument& argument : arguments) {
    if (const auto* word = std::get_if<std::uintptr_t>(&argument)) {
      words.push_back(*word);
      continue;
    }
    for (const auto half :
         std::bit_cast<std::array<std::uintptr_t, 2>>(std::get<double>(argument))) {
      words.push_back(half);
    }
  }
  return CallForeign(function, words.data(), words.size());
}

}  // namespace quillmar::platform
