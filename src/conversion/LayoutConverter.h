// One conversion of one protocol. Which class does it depends on the kind of the calculation.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "conversion/ProtocolConverter.h"

namespace quillmar {

class LayoutConverter {
 public:
  using Protocols = std::vector<std::unique_ptr<VXProtocol>>;

  // Further protocols that the mapping file asks for are appended to `newProtocols`.
  LayoutConverter(ConverterKind kind, VXProtocol& protocol, const ProtocolConverter& controller,
                  Protocols& newProtocols)
      : protocol(protocol), controller(controller), kind(kind), newProtocols(newProtocols) {}
  LayoutConverter(const LayoutConverter&) = delete;
  LayoutConverter& operator=(const LayoutConverter&) = delete;
  virtual ~LayoutConverter() = default;

  virtual int Convert(int fromMajor, int toMajor, int fromMinor, int toMinor) = 0;

 protected:
  // Renames the protocol's view key by the mapping file's section for this step, and splits the
  // protocol when the section names several new keys.
  void MapViewKey(int fromMajor, int toMajor);

  VXProtocol& protocol;
  const ProtocolConverter& controller;

 private:
  bool LoadMapping(const std::string& dataFileType, int fromMajor, int toMajor);
  void SplitViews(const std::vector<std::string>& viewKeys);

  ConverterKind kind;
  Protocols& newProtocols;
};

// The converter of a data-file type, which is given without what stands in front of "|".
std::unique_ptr<LayoutConverter> MakeLayoutConverter(const std::string& dataFileType,
                                                     VXProtocol& protocol,
                                                     const ProtocolConverter& controller,
                                                     LayoutConverter::Protocols& newProtocols);

}  // namespace quillmar
