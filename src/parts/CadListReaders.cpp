#include "parts/CadListReaders.h"

#include "parts/TwoStepRead.h"

namespace quillmar {
namespace {

constexpr int kUsualSize = 65535;  // characters; the buffer holds a NUL more

constexpr const char* kCannotReadList = "Cannot get list of parameters from CAD";

struct ReaderRow {
  CadList list;
  bool (*isOffered)(const CadDriverTable& driver);
  int (*call)(const CadDriverTable& driver, const char* key, char* text, int* size);
  const char* message;  // of the first step; the second has one for all
};

template <auto kFunction>
bool IsOffered(const CadDriverTable& driver) {
  return static_cast<bool>(driver.*kFunction);
}

template <auto kFunction>
int Call(const CadDriverTable& driver, const char* key, char* text, int* size) {
  return (driver.*kFunction)(key, text, size);
}

int CallParametersEx(const CadDriverTable& driver, const char* key, char* text, int* size) {
  return driver.GetParameterListEx(key, text, size, 0, 0);
}

template <auto kFunction>
constexpr ReaderRow Row(CadList list, const char* message) {
  return {list, IsOffered<kFunction>, Call<kFunction>, message};
}

constexpr ReaderRow kReaders[] = {
    Row<&CadDriverTable::GetParameterList>(CadList::Parameters, kCannotReadList),
    {CadList::ParametersEx, IsOffered<&CadDriverTable::GetParameterListEx>, CallParametersEx,
     kCannotReadList},
    Row<&CadDriverTable::GetPhysicalPropertiesEx>(CadList::PhysicalPropertiesEx, kCannotReadList),
    Row<&CadDriverTable::GetFeaturesState>(CadList::FeaturesState,
                                           "Cannot get list of feature states from CAD"),
    Row<&CadDriverTable::GetReferenceDims>(CadList::ReferenceDims,
                                           "Cannot get list of reference dims from CAD"),
    Row<&CadDriverTable::GetShaftParameterList>(CadList::ShaftParameters, kCannotReadList),
    Row<&CadDriverTable::GetPartsVisibility>(CadList::PartsVisibility,
                                             "Cannot get list of parts state from CAD"),
};

const ReaderRow& RowOf(CadList list) {
  const ReaderRow* row = kReaders;
  while (row->list != list) ++row;
  return *row;
}

}  // namespace

bool OffersList(const CadDriverTable& driver, CadList list) {
  return RowOf(list).isOffered(driver);
}

bool ReadCadList(const CadDriverTable& driver, ErrorLog& errors, CadList list,
                 const std::string& key, std::string& text) {
  const ReaderRow& row = RowOf(list);
  text.clear();
  if (!row.isOffered(driver)) return true;
  const ReadResult result = ReadInTwoSteps(
      [&](char* buffer, int* size) { return row.call(driver, key.c_str(), buffer, size); },
      kUsualSize, text);
  if (result == ReadResult::Done) return true;
  errors.ReportError(result == ReadResult::FailedAtOnce ? row.message : kCannotReadList, QM_HERE);
  return false;
}

bool ReadCadReference(const CadDriverTable& driver, const std::string& partName,
                      std::string& reference) {
  return ReadInTwoSteps(
             [&](char* buffer, int* size) {
               return driver.GetProtocol(partName.c_str(), buffer, size);
             },
             kUsualSize, reference) == ReadResult::Done;
}

}  // namespace quillmar
