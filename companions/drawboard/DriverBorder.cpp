// The exported functions: each goes through the recorder to its namesake in `driver`.
#include "drawboard/Drawboard.h"
#include "drawboard/Driver.h"
#include "recorder/Recorder.h"

namespace drawboard {

namespace extras {
#define DRAWBOARD_DECLARE(name, result, parameters, arguments) result name parameters;
DRAWBOARD_FUNCTIONS(DRAWBOARD_DECLARE)
#undef DRAWBOARD_DECLARE
}  // namespace extras

namespace {

constexpr quillmar::recorder::Border border{"Drawboard", quillmar::recorder::Kind::Driver};

template <typename Operation>
int Answer(const char* function, Operation operation) {
  try {
    return operation();
  } catch (const std::exception& error) {
    TheAddin().board.messages.push_back(std::string(function) + ": " + error.what());
    return 0;
  }
}

namespace answered {
#define DRAWBOARD_ANSWER(name, result, parameters, arguments)     \
  result name parameters {                                        \
    return Answer(#name, [&] { return driver::name arguments; }); \
  }
#define DRAWBOARD_ANSWER_DRIVER(need, ...) DRAWBOARD_ANSWER(__VA_ARGS__)
QM_CAD_FUNCTIONS(DRAWBOARD_ANSWER_DRIVER)
QM_CAD_2D_FUNCTIONS(DRAWBOARD_ANSWER_DRIVER)
#undef DRAWBOARD_ANSWER_DRIVER
#undef DRAWBOARD_ANSWER
}  // namespace answered

}  // namespace
}  // namespace drawboard

// The driver functions are the module's calls; the extra ones belong to the CAD's own side and are
// not recorded.
#define DRAWBOARD_EXPORT_DRIVER(need, ...) \
  QM_BORDER_EXPORT(drawboard::border, drawboard::answered, QM_CDECL, __VA_ARGS__)
QM_CAD_FUNCTIONS(DRAWBOARD_EXPORT_DRIVER)
QM_CAD_2D_FUNCTIONS(DRAWBOARD_EXPORT_DRIVER)

#define DRAWBOARD_EXPORT_EXTRA(name, result, parameters, arguments)                     \
  QM_EXTERN_C QM_EXPORT result QM_CDECL name parameters {                               \
    return drawboard::Answer(#name, [&] { return drawboard::extras::name arguments; }); \
  }
DRAWBOARD_FUNCTIONS(DRAWBOARD_EXPORT_EXTRA)
