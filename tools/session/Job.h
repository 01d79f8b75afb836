// What a session is to do, step by step. Read from a JSON file that a user writes, so whatever is
// wrong in it is named with its field.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace session {

// Something in the job is not as it must be; the text says where and what was expected.
class JobError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

using Inputs = std::vector<std::pair<std::string, std::string>>;
// Sets one of them, which keeps its place when it is there.
void PutInput(Inputs& inputs, const std::string& name, const std::string& value);

// All texts are in the system code page. `objects` are the names, in the CAD, of what an earlier
// session on the same document made of the step; a step of which one still stands changes it in
// place.

// Starts a calculation and waits until its parts stand in the CAD.
struct Calculation {
  std::string name;         // unique in the job
  std::string calculation;  // data-file type by which the module starts it
  std::string standard;
  std::string on;  // the calculation whose first part is selected meanwhile; empty: none
  Inputs inputs;
  std::vector<std::string> objects;
};

// Recalculates with other inputs and waits until the parts are updated.
struct Change {
  std::string name;  // of the calculation that is changed
  Inputs inputs;
};

// What follows are the user's commands on the first part of a calculation, which he has selected.

// Recalculates it with other inputs, as Change does.
struct Update {
  std::string name;  // of the calculation that is updated
  Inputs inputs;
};

// Copies the part under an identity of its own. The copy is a calculation like others.
struct Copy {
  std::string name;
  std::string of;  // calculation
  Inputs inputs;   // in which the copy differs
  std::vector<std::string> objects;
};

// Puts such a copy in the place of the part.
struct Replace {
  std::string name;
  std::string of;
  Inputs inputs;
  std::vector<std::string> objects;
};

// Options of the user, as an options dialog would store them.
struct Settings {
  std::string key;  // below the module's own
  struct Value {
    std::string name;
    std::variant<std::string, std::uint32_t> value;
  };
  std::vector<Value> values;
};

// Logs out and in again, so that the module reads its options anew.
struct NewLogin {};

// A group of calculations, which is put into the CAD as a whole.
struct Group {
  struct Member {
    std::string calculation;
    Inputs inputs;
  };
  std::string name;  // of the step, and of the group in the CAD
  std::vector<Member> members;
  std::vector<std::string> objects;
};

// Connects a protocol to the assembly that the document is.
struct Assembly {
  std::string name;
  std::vector<std::string> objects;
};

// Puts a drawing of a calculation's first part on the sheet.
struct Drawing {
  std::string name;
  std::string of;  // calculation
  std::vector<std::string> objects;
};

// Puts a picture of it there, as the host draws it for documents.
struct Picture {
  std::string name;
  std::string of;  // calculation
  std::vector<std::string> objects;
};

// Puts a sheet format there.
struct Format {
  std::string name;
  std::string standard;
  double scale = 1;
  std::vector<std::string> objects;
};

// A part of an older document: its calculation is of the older layout and is converted when the
// part is opened. Then it is recalculated.
struct OldPart {
  std::string name;
  std::string calculation;
  std::string standard;
  std::string kind;  // of the object in the CAD
  Inputs values;     // data parameters of the older layout
  std::vector<std::string> objects;
};

// Makes a user part of what stands in the document, and an object that carries its protocol.
struct UserPart {
  enum class Description { Lisp, Dxf };
  std::string name;
  std::string views;
  int units = 0;  // 0 mm, 1 in
  double x = 0, y = 0;
  Description description = Description::Lisp;
  std::vector<std::string> objects;
};

// Updates whatever is linked.
struct LinkRefresh {};

// Gives every part the texts for bills of materials that the options of the user now ask for.
struct BillRefresh {};

// Lets the group manager work on a group, in a session of its own beside this one.
struct GroupManager {
  std::string name;  // of the group
};

using Step =
    std::variant<Calculation, Change, Settings, NewLogin, Group, Assembly, Drawing, Picture, Format,
                 OldPart, UserPart, LinkRefresh, BillRefresh, GroupManager, Update, Copy, Replace>;

// The word that a job's "do" names a step with, the step's name (empty for one without), what it
// does for people (UTF-8), and what was left of it by an earlier session (null for a step that
// leaves nothing).
const char* WordOf(const Step& step);
std::string NameOf(const Step& step);
std::string TitleOf(const Step& step);
const std::vector<std::string>* ObjectsOf(const Step& step);

struct Job {
  std::string name;
  std::string document;
  std::string unit;  // "mm" or "in"
  std::vector<Step> steps;
};

// Reads a job from JSON text in UTF-8. Throws a JobError.
Job ReadJob(const std::string& text);

}  // namespace session
