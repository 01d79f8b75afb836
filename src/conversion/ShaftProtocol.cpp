#include "conversion/ShaftProtocol.h"

#include <algorithm>
#include <string_view>

#include "base/Texts.h"
#include "conversion/SureRead.h"
#include "platform/FloatingPoint.h"

namespace quillmar::shaft {
namespace {

constexpr const char* kNoDimension = "ND";
constexpr const char* kInch = "in";
constexpr double kMillimetresPerInch = 25.4;

// The store numbers the data parameters of a protocol with 16 bits: a larger count is damage.
constexpr int kLargestCount = 32767;

constexpr const char* kSynchronize = "Synchronize";
constexpr const char* kChangedVars = "ChangedVars";
constexpr const char* kDynamic = "Dynamic";
constexpr const char* kVexteron = "Vexteron";
constexpr const char* kDriverList = "DriverList";
constexpr const char* kElementRecord = "Element";

using NameOf = const char* Value::*;

std::string Numbered(const char* name, int number) {
  return std::string(name) + "_" + std::to_string(number);
}

Parameter Count(int count) { return {std::to_string(count), kNoDimension}; }

// --- reading ---

Parameter Read(VXProtocol& protocol, const std::string& name) {
  Parameter parameter;
  ReadSurely(protocol, name, parameter.value, parameter.unit);
  return parameter;
}

// Negative, with a report, when the count cannot be true.
int ReadCount(VXProtocol& protocol, const char* name) {
  const int count = ParseInt(Read(protocol, name).value);
  if (count <= kLargestCount) return std::max(count, 0);
  protocol.Context().errors.ReportError(std::string("Count out of range: ") + name, QM_HERE);
  return -1;
}

Element ReadOldElement(VXProtocol& protocol, int number) {
  Element element;
  for (std::size_t i = 0; i < kFields; ++i) {
    element.fields[i] = Read(protocol, Numbered(kFieldNames[i], number));
  }
  const int type = ParseInt(element[Field::Drazka].value);
  element.type = type >= kFirstType && type <= kLastType ? type : kFirstType;
  return element;
}

Element ReadCurrentElement(VXProtocol& protocol, int number) {
  Element element;
  const int type = ParseInt(Read(protocol, Numbered(kTypeVariable, number)).value);
  element.type = type >= kFirstType && type <= kLastType ? type : kFirstType;
  element[Field::Drazka] = Count(element.type);
  for (const CommonVariable& common : CommonVariables()) {
    element[common.variable.old] = Read(protocol, Numbered(common.variable.current, number));
  }
  for (const Variable& variable : VariablesOfType(element.type)) {
    element[variable.old] = Read(protocol, Numbered(variable.current, number));
  }
  return element;
}

std::vector<Element> ReadElements(VXProtocol& protocol, int count,
                                  Element (*read)(VXProtocol&, int)) {
  std::vector<Element> elements;
  for (int number = 1; number <= count; ++number) elements.push_back(read(protocol, number));
  return elements;
}

std::vector<Row> ReadRows(VXProtocol& protocol, const NumberedList& list, int count, NameOf name) {
  std::vector<Row> rows(static_cast<std::size_t>(count), Row(list.values.size()));
  for (int number = 0; number < count; ++number) {
    Row& row = rows[static_cast<std::size_t>(number)];
    for (std::size_t i = 0; i < row.size(); ++i) {
      const char* base = list.values[i].*name;
      if (base != nullptr) row[i] = Read(protocol, Numbered(base, number));
    }
  }
  return rows;
}

Row ReadMaterial(VXProtocol& protocol, NameOf name) {
  Row material;
  for (const Value& value : MaterialValues()) material.push_back(Read(protocol, value.*name));
  return material;
}

// --- writing ---

// A store may take an empty value as an order to remove the parameter, and refuse what is not
// there: either way it stands as it should.
bool Write(VXProtocol& protocol, const std::string& name, const Parameter& parameter) {
  return protocol.PutDataParam(name, parameter.value, parameter.unit) ||
         (parameter.value.empty() && parameter.unit.empty());
}

bool WriteRows(VXProtocol& protocol, const NumberedList& list, const std::vector<Row>& rows,
               NameOf name) {
  int number = 0;
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      const char* base = list.values[i].*name;
      if (base != nullptr && !Write(protocol, Numbered(base, number), row[i])) return false;
    }
    ++number;
  }
  return true;
}

bool WriteMaterial(VXProtocol& protocol, const Row& material, NameOf name) {
  for (std::size_t i = 0; i < material.size(); ++i) {
    if (!Write(protocol, MaterialValues()[i].*name, material[i])) return false;
  }
  return true;
}

// In the current layout the material is always a number.
Row WithMaterialNumber(Row material) {
  material[0] = Count(ParseInt(material[0].value));
  return material;
}

bool WriteNoChangedVars(VXProtocol& protocol) {
  return protocol.PutKeyWord(kSynchronize, kChangedVars, "");
}

// Metric threads get a little more, so that a whole number of threads stays one when it is cut.
// Without a pitch there is no such number.
Parameter ThreadsPerInch(const Parameter& pitch) {
  const platform::StandardFloatingPoint scope;
  const double length = ParseReal(pitch.value);
  if (length == 0.0) return {"", kNoDimension};
  const double threads =
      pitch.unit == kInch ? 1.0 / length : 1.0 / (length * kMillimetresPerInch) + 0.0001;
  return {FormatNumber(threads), kNoDimension};
}

bool WriteCurrentElement(VXProtocol& protocol, const Element& element, int number) {
  if (!Write(protocol, Numbered(kTypeVariable, number), Count(element.type))) return false;
  for (const CommonVariable& common : CommonVariables()) {
    const Variable& variable = common.variable;
    if (!Write(protocol, Numbered(variable.current, number), element[variable.old])) return false;
  }
  for (const Variable& variable : VariablesOfType(element.type)) {
    if (!Write(protocol, Numbered(variable.current, number), element[variable.old])) return false;
  }
  return element.type != kThreadType ||
         Write(protocol, Numbered(kThreadsVariable, number), ThreadsPerInch(element[kPitchField]));
}

bool WriteOldElement(VXProtocol& protocol, const Element& element, int number) {
  for (std::size_t i = 0; i < kFields; ++i) {
    if (!Write(protocol, Numbered(kFieldNames[i], number), element.fields[i])) return false;
  }
  return true;
}

bool WriteElements(VXProtocol& protocol, const std::vector<Element>& elements,
                   bool (*write)(VXProtocol&, const Element&, int)) {
  int number = 0;
  for (const Element& element : elements) {
    if (!write(protocol, element, ++number)) return false;
  }
  return true;
}

// --- section "Dynamic": what the calculation shows for each element ---

bool WriteDriverList(VXProtocol& protocol, std::size_t count) {
  std::string drivers;
  for (std::size_t number = 1; number <= count; ++number) {
    if (number > 1) drivers += ',';
    drivers += Numbered(kElementRecord, static_cast<int>(number));
  }
  return protocol.PutKeyWord(kDynamic, kDriverList, drivers) &&
         protocol.PutKeyWord(kVexteron, kDynamic, "1");
}

void AppendVariable(std::string& record, const char* name, int number) {
  if (!record.empty()) record += ',';
  record += Numbered(name, number);
}

std::string CommonRecord(Group group, int number) {
  std::string record;
  for (const CommonVariable& common : CommonVariables()) {
    if (common.group == group) AppendVariable(record, common.variable.current, number);
  }
  return record;
}

std::string TypeRecord(int type, int number) {
  std::string record;
  const char* before = "";
  for (const Variable& variable : VariablesOfType(type)) {
    if (std::string_view(variable.current) != before) {
      AppendVariable(record, variable.current, number);
    }
    before = variable.current;
  }
  if (type == kThreadType) AppendVariable(record, kThreadsVariable, number);
  return record;
}

// Element: picture and type; A1, A2, A3: variables of the body, of the ends, of the type.
bool WriteElementRecords(VXProtocol& protocol, const Element& element, int number) {
  const std::string picture = std::to_string(element.type) + ".wmf";
  const auto put = [&](const char* keyword, const std::string& record) {
    return protocol.PutKeyWord(kDynamic, Numbered(keyword, number), record);
  };
  return put(kElementRecord, picture + "," + Numbered(kTypeVariable, number)) &&
         put("A1", CommonRecord(Group::Body, number)) &&
         put("A2", CommonRecord(Group::Ends, number)) &&
         put("A3", TypeRecord(element.type, number));
}

}  // namespace

std::optional<Shaft> ReadOld(VXProtocol& protocol) {
  const int elements = ReadCount(protocol, kOldElementCount);
  if (elements < 0) return std::nullopt;
  if (elements == 0) return Shaft();
  const int supports = ReadCount(protocol, kSupports.oldCount);
  const int loads = ReadCount(protocol, kLoads.oldCount);
  if (supports < 0 || loads < 0) return std::nullopt;
  return Shaft{ReadElements(protocol, elements, &ReadOldElement),
               ReadRows(protocol, kSupports, supports, &Value::old),
               ReadRows(protocol, kLoads, loads, &Value::old), ReadMaterial(protocol, &Value::old)};
}

std::optional<Shaft> ReadCurrent(VXProtocol& protocol) {
  const int elements = ReadCount(protocol, kCurrentElementCount);
  const int supports = ReadCount(protocol, kSupports.currentCount);
  const int loads = ReadCount(protocol, kLoads.currentCount);
  if (elements < 0 || supports < 0 || loads < 0) return std::nullopt;
  return Shaft{ReadElements(protocol, elements, &ReadCurrentElement),
               ReadRows(protocol, kSupports, supports, &Value::current),
               ReadRows(protocol, kLoads, loads, &Value::current),
               ReadMaterial(protocol, &Value::current)};
}

bool WriteCurrent(VXProtocol& protocol, const Shaft& shaft) {
  const auto count = [](const auto& items) { return Count(static_cast<int>(items.size())); };
  return WriteNoChangedVars(protocol) &&
         Write(protocol, kCurrentElementCount, count(shaft.elements)) &&
         WriteElements(protocol, shaft.elements, &WriteCurrentElement) &&
         WriteDriverList(protocol, shaft.elements.size()) &&
         Write(protocol, kActiveElement, Count(shaft.elements.empty() ? 0 : 1)) &&
         Write(protocol, kInsertionPlace, Count(0)) &&
         WriteMaterial(protocol, WithMaterialNumber(shaft.material), &Value::current) &&
         Write(protocol, kSupports.currentCount, count(shaft.supports)) &&
         WriteRows(protocol, kSupports, shaft.supports, &Value::current) &&
         Write(protocol, kLoads.currentCount, count(shaft.loads)) &&
         WriteRows(protocol, kLoads, shaft.loads, &Value::current) &&
         WriteElements(protocol, shaft.elements, &WriteElementRecords);
}

bool WriteOld(VXProtocol& protocol, const Shaft& shaft) {
  const auto count = [](const auto& items) { return Count(static_cast<int>(items.size())); };
  return Write(protocol, kOldElementCount, count(shaft.elements)) &&
         WriteElements(protocol, shaft.elements, &WriteOldElement) &&
         Write(protocol, kSupports.oldCount, count(shaft.supports)) &&
         WriteRows(protocol, kSupports, shaft.supports, &Value::old) &&
         Write(protocol, kLoads.oldCount, count(shaft.loads)) &&
         WriteRows(protocol, kLoads, shaft.loads, &Value::old) &&
         WriteMaterial(protocol, shaft.material, &Value::old) && WriteNoChangedVars(protocol);
}

}  // namespace quillmar::shaft
