// Callers that keep the stack aligned to 4 bytes only, as old compilers do.
#include "Calculation.h"
#include "quillmar/CalculationHost.h"

// Calls `function` with `count` words while the stack pointer in front of the call lies `offset`
// bytes (4, 8 or 12) below a 16-byte boundary; whoever removes the arguments.
extern "C" int CallMisaligned(void* function, const void* const* words, int count, int offset);
asm(R"(
  .intel_syntax noprefix
  .text
  .globl _CallMisaligned
_CallMisaligned:
  push ebp
  mov ebp, esp
  push esi
  push edi
  mov ecx, dword ptr [ebp + 16]
  mov edx, dword ptr [ebp + 12]
  lea eax, [ecx * 4]
  sub esp, eax
  and esp, -16
  sub esp, dword ptr [ebp + 20]
  mov esi, edx
  mov edi, esp
  rep movsd
  call dword ptr [ebp + 8]
  lea esp, [ebp - 8]
  pop edi
  pop esi
  pop ebp
  ret
  .att_syntax prefix
)");

namespace quillmar::contract {
namespace {

class MisalignedStack : public Calculation {
 protected:
  template <class Function>
  static int Call(int offset, Function* function, std::vector<const void*> words) {
    return CallMisaligned(reinterpret_cast<void*>(function), words.data(),
                          static_cast<int>(words.size()), offset);
  }
};

TEST_F(MisalignedStack, ExportsWorkAllTheSame) {
  const std::string id = Calculated(kShaft);
  const std::string reference = Record(id).Reference();
  host.Answer("2", "7");
  for (const int offset : {4, 8, 12}) {
    SCOPED_TRACE(offset);
    strict::Core().Strict_SetAnswer("GetProtocol.text", reference.c_str());
    int answered = -1;
    const auto number = [](int value) { return reinterpret_cast<const void*>(value); };
    EXPECT_EQ(
        Call(offset, module.LoginCad,
             {"Strictcad.dll", number(17), number(1), "models", "prt", "fea", "Strict", &answered}),
        1);
    EXPECT_EQ(Call(offset, module.ObtainProtocol, {"Shaft:1"}), 1);
    EXPECT_EQ(Call(offset, module.ShowDialogUT, {id.c_str()}), 7);
    EXPECT_EQ(Call(offset, module.Set2dFileType, {number(2)}), 1);
    host.Forget();
    Call(offset, module.StartCalculation, {"shaft", "ISO"});
    EXPECT_THAT(host.Commands(), SizeIs(1));
    host.Answer("2", "7");
    EXPECT_EQ(Call(offset, module.LogoutCad, {}), 1);
  }
}

}  // namespace
}  // namespace quillmar::contract
