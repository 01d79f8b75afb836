#include "drawboard/Kernel.h"

namespace drawboard {

std::unique_ptr<Kernel> MakeKernel(const std::string&) { return MakeFormulaKernel(); }

}  // namespace drawboard
