#include <dlfcn.h>

#include "drawboard/BoardError.h"
#include "drawboard/Design.h"
#include "drawboard/native/SolidLibrary.h"
#include "platform/Files.h"
#include "platform/native/Machine.h"

namespace drawboard {
namespace {

bool IsKnown(const Design& design) { return !std::holds_alternative<std::monostate>(design); }

MassProperties OfDensity(MassProperties p, double density) {
  for (double* each :
       {&p.mass, &p.momentXX, &p.momentYY, &p.momentZZ, &p.momentXY, &p.momentXZ, &p.momentYZ}) {
    *each *= density;
  }
  return p;
}

// Solids for the library models that are known, formulas for everything else.
class OcctKernel final : public Kernel {
 public:
  explicit OcctKernel(std::string libraryPath) : libraryPath(std::move(libraryPath)) {}

  void Check(const PartDescription& part) const override {
    const Design design = ReadDesign(part);
    if (!IsKnown(design)) return;
    std::string problem;
    SolidLibrary* library = Library();
    if (library != nullptr && !library->Weigh(design, problem)) throw BoardError(problem);
  }

  std::optional<MassProperties> Weigh(const PartDescription& part) const override {
    const auto design = PossibleDesign(part);
    if (!design) return std::nullopt;
    SolidLibrary* library = IsKnown(*design) ? Library() : nullptr;
    if (library == nullptr) return formulas->Weigh(part);
    std::string problem;
    const auto unitMass = library->Weigh(*design, problem);
    if (!unitMass) return std::nullopt;
    return InDocumentUnits(OfDensity(*unitMass, DensityOf(part)), part.unit);
  }

  Outlines Draw(const PartDescription& part) const override { return formulas->Draw(part); }

  NamedTexts Measure(const PartDescription& part) const override { return formulas->Measure(part); }

  std::optional<ExchangeFiles> Export(const PartDescription& part,
                                      const std::string& name) const override {
    const Design design = ReadDesign(part);
    SolidLibrary* library = IsKnown(design) ? Library() : nullptr;
    if (library == nullptr) return std::nullopt;
    std::string problem;
    auto files = library->Export(design, name, problem);
    if (!files) throw BoardError(problem);
    return files;
  }

  std::optional<ExchangeFiles> ExportAssembly(const std::vector<Instance>& instances,
                                              const std::string& name) const override {
    std::vector<AssemblyBody> bodies;
    for (const Instance& instance : instances) {
      const auto design = PossibleDesign(instance.description);
      if (design && IsKnown(*design)) bodies.push_back({instance.part, instance.name, *design});
    }
    SolidLibrary* library = bodies.empty() ? nullptr : Library();
    if (library == nullptr) return std::nullopt;
    std::string problem;
    auto files = library->ExportAssembly(bodies, name, problem);
    if (!files) throw BoardError(problem);
    return files;
  }

 private:
  // Loaded when the first solid is needed: loading the modeller takes longer than everything that
  // a session without solids asks of the CAD. It stays for the life of the process, since the
  // modeller cannot be unloaded. Null on a machine on which it is not installed: then formulas do.
  // One that cannot be loaded is not tried again: what failed once would fail for each part, after
  // as long a wait. Throws a BoardError with the reason.
  SolidLibrary* Library() const {
    if (!tried) Load();
    tried = true;
    if (!failure.empty()) throw BoardError(failure);
    return library;
  }

  void Load() const {
    if (!quillmar::platform::FileExists(libraryPath)) return;
    const auto file = quillmar::platform::Machine::Current().HostPath(libraryPath);
    void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    const auto find = reinterpret_cast<SolidLibrary* (*)()>(
        handle != nullptr ? dlsym(handle, kSolidLibraryFunction) : nullptr);
    if (find != nullptr) {
      library = find();
    } else {
      failure = "The solid modeller cannot be loaded: " + std::string(dlerror());
    }
  }

  std::string libraryPath;
  std::unique_ptr<Kernel> formulas = MakeFormulaKernel();
  mutable bool tried = false;
  mutable SolidLibrary* library = nullptr;
  mutable std::string failure;
};

}  // namespace

std::unique_ptr<Kernel> MakeKernel(const std::string& addinFolder) {
  return std::make_unique<OcctKernel>(addinFolder + "\\" + kSolidLibraryFile);
}

}  // namespace drawboard
