// The border of the solid modeller: both families of exceptions end here.
#include <Standard_Failure.hxx>
#include <algorithm>
#include <deque>
#include <exception>

#include "drawboard/BoardError.h"
#include "drawboard/native/occt/Solid.h"

namespace drawboard {
namespace {

// Enough for an assembly; a solid with its faces takes up to a few megabytes.
constexpr std::size_t kMostSolids = 48;

// A design's solid, or why there is none.
struct Built {
  Design design;
  Solid solid;
  std::string problem;
};

std::string TextOf(const Standard_Failure& failure) {
  const std::string message =
      failure.GetMessageString() != nullptr ? failure.GetMessageString() : "";
  return std::string("The solid modeller failed: ") + failure.DynamicType()->Name() +
         (message.empty() ? "" : ", " + message);
}

// Runs what may throw; a problem's text is never empty.
template <typename Operation>
std::string ProblemOf(Operation operation) {
  try {
    operation();
    return {};
  } catch (const BoardError& error) {
    return error.what();
  } catch (const Standard_Failure& failure) {
    return TextOf(failure);
  } catch (const std::exception& error) {
    return std::string("The solid modeller failed: ") + error.what();
  }
}

class Library final : public SolidLibrary {
 public:
  std::optional<MassProperties> Weigh(const Design& design, std::string& problem) override {
    const Built* built = Find(design, problem);
    if (built == nullptr) return std::nullopt;
    return built->solid.properties;
  }

  std::optional<ExchangeFiles> Export(const Design& design, const std::string& name,
                                      std::string& problem) override {
    const Built* built = Find(design, problem);
    if (built == nullptr) return std::nullopt;
    ExchangeFiles files;
    problem = ProblemOf([&] {
      files = {StepOf(built->solid.shape, design, name), GlbOf(built->solid.shape, design, name),
               SvgOf(built->solid.shape, name)};
    });
    if (!problem.empty()) return std::nullopt;
    return files;
  }

  std::optional<ExchangeFiles> ExportAssembly(const std::vector<AssemblyBody>& bodies,
                                              const std::string& name,
                                              std::string& problem) override {
    std::vector<PlacedSolid> parts;
    for (const AssemblyBody& body : bodies) {
      std::string missing;
      const Built* built = Find(body.design, missing);
      if (built != nullptr) parts.push_back({body, built->solid.shape});
    }
    ExchangeFiles files;
    problem = ProblemOf([&] {
      if (parts.empty()) throw BoardError("No part of the assembly has a solid");
      files = AssemblyOf(parts, name);
    });
    if (!problem.empty()) return std::nullopt;
    return files;
  }

 private:
  // Null with a problem when the design makes no solid.
  const Built* Find(const Design& design, std::string& problem) {
    const auto known = std::find_if(kept.begin(), kept.end(),
                                    [&](const Built& each) { return each.design == design; });
    Built& built = known != kept.end() ? *known : Build(design);
    problem = built.problem;
    return problem.empty() ? &built : nullptr;
  }

  Built& Build(const Design& design) {
    if (kept.size() >= kMostSolids) kept.pop_front();
    Built& built = kept.emplace_back();
    built.design = design;
    built.problem = ProblemOf([&] { built.solid = BuildSolid(design); });
    return built;
  }

  std::deque<Built> kept;
};

}  // namespace

SolidLibrary& OcctSolids() {
  // Not destroyed at the end of the process: the modeller's own objects may be gone by then.
  static Library& library = *new Library;
  return library;
}

}  // namespace drawboard
