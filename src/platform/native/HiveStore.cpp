#include "platform/native/HiveStore.h"

#include <system_error>
#include <utility>

namespace quillmar::platform {

HiveStore::HiveStore(std::filesystem::path hiveFile, std::u16string hiveName,
                     std::function<void(const std::string&)> reporter)
    : file(std::move(hiveFile)), name(std::move(hiveName)), report(std::move(reporter)) {}

void HiveStore::Look(const std::function<void(RegistryNode& root)>& look) {
  std::lock_guard guard(mutex);
  if (!batch) Refresh();
  look(document.root);
}

bool HiveStore::Change(const std::function<HiveChange(RegistryNode& root)>& change) {
  std::lock_guard guard(mutex);
  if (batch) {
    const HiveChange outcome = batch->Held() ? change(document.root) : HiveChange::Failed;
    batchChanged = batchChanged || outcome == HiveChange::Made;
    return outcome != HiveChange::Failed;
  }
  std::error_code error;
  std::filesystem::create_directories(file.parent_path(), error);
  FolderLock lock(file.parent_path());
  if (!lock.Held() || !Refresh()) return false;
  HiveChange outcome = change(document.root);
  if (outcome != HiveChange::Made) return outcome == HiveChange::Nothing;
  return Write();
}

void HiveStore::Begin() {
  mutex.lock();
  std::error_code error;
  std::filesystem::create_directories(file.parent_path(), error);
  batch.emplace(file.parent_path());
  batchChanged = false;
  // A file that cannot be read must not be replaced.
  if (batch->Held() && !Refresh()) batch.emplace(std::filesystem::path());
}

bool HiveStore::End(bool keep) {
  bool written = batch->Held();
  if (batchChanged) {
    written = keep && written && Write();
    if (!keep) Forget();
  }
  batch.reset();
  mutex.unlock();
  return written;
}

bool HiveStore::Write() {
  if (!ReplaceFile(file, FormatRegistryFile(document, name))) {
    Forget();
    return false;
  }
  stamp = StampOf(file);
  return true;
}

bool HiveStore::Refresh() {
  if (StampOf(file).SameAs(stamp)) return true;
  std::optional<FileContents> contents = ReadFile(file);
  if (!contents) return false;
  document = ParseRegistryFile(contents->bytes, name);
  stamp = contents->stamp;
  ReportDamage(std::hash<std::string>()(contents->bytes));
  return true;
}

void HiveStore::ReportDamage(std::size_t version) {
  if (version == reportedVersion) return;
  reportedVersion = version;
  for (std::size_t line : document.damagedLines) {
    report(file.filename().native() + "(" + std::to_string(line) + "): not understood");
  }
}

// What is in memory was not written: the file counts.
void HiveStore::Forget() {
  document = {};
  stamp = {};
  Refresh();
}

}  // namespace quillmar::platform
