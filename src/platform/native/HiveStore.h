// A hive and its file. Several processes may work on one image: the file is read again whenever
// it has changed, and every change is in the file when the call that makes it returns.
#pragma once

#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "platform/native/HostFiles.h"
#include "platform/native/RegistryFile.h"

namespace quillmar::platform {

// What a change came to. One that failed has changed nothing.
enum class HiveChange { Failed, Nothing, Made };

class HiveStore {
 public:
  // `report` is told of damaged lines, once for each version of the file.
  HiveStore(std::filesystem::path file, std::u16string name,
            std::function<void(const std::string&)> report);

  void Look(const std::function<void(RegistryNode& root)>& look);

  // True when `change` made its change and it was written, or found nothing to be changed. After
  // a failure everything is as it was.
  bool Change(const std::function<HiveChange(RegistryNode& root)>& change);

  // From Begin to End the changes of this thread stay in memory, and nobody else gets at the hive.
  // End writes all of them or, without `keep` or when it cannot, takes all of them back. False when
  // they were not written. Not to be nested.
  void Begin();
  bool End(bool keep);

 private:
  bool Write();
  // False when there is a file that cannot be read: it must not be replaced.
  bool Refresh();
  void ReportDamage(std::size_t version);
  void Forget();

  std::filesystem::path file;
  std::u16string name;
  std::function<void(const std::string&)> report;
  std::recursive_mutex mutex;  // held through a batch
  RegistryDocument document;
  FileStamp stamp;
  std::size_t reportedVersion = 0;
  std::optional<FolderLock> batch;
  bool batchChanged = false;
};

}  // namespace quillmar::platform
