#include "keelcomm/Database.h"

#include <algorithm>
#include <vector>

namespace quillmar::keelcomm {
namespace {

constexpr std::int64_t kLayout = 1;

// Bytes everywhere: texts come in whatever code page the machine has. Keys are the folded names.
// Texts of other makers stand under the empty section, which nobody else can name.
constexpr char kTables[] = R"(
  CREATE TABLE protocols(
    number INTEGER PRIMARY KEY AUTOINCREMENT, id BLOB NOT NULL UNIQUE,
    major INTEGER, minor INTEGER);
  CREATE TABLE texts(
    protocol INTEGER NOT NULL, section BLOB NOT NULL, keyword BLOB NOT NULL,
    position INTEGER NOT NULL, sectionName BLOB NOT NULL, keywordName BLOB NOT NULL,
    value BLOB NOT NULL, unit BLOB NOT NULL,
    PRIMARY KEY(protocol, section, keyword)) WITHOUT ROWID;
  CREATE TABLE owners(
    id BLOB PRIMARY KEY, window INTEGER NOT NULL, process INTEGER NOT NULL,
    birth INTEGER NOT NULL) WITHOUT ROWID;
  PRAGMA user_version = 1;
)";

constexpr std::string_view kForeignSection;

Connection Open(const std::string& file, int busyMilliseconds) {
  sqlite3* opened = nullptr;
  const int result =
      sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  Connection connection(opened);
  if (result != SQLITE_OK) ThrowLastError(opened, "the database cannot be opened");
  sqlite3_busy_timeout(opened, busyMilliseconds);
  return connection;
}

void Run(sqlite3* connection, const char* sql) {
  if (sqlite3_exec(connection, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
    ThrowLastError(connection, "the database cannot be used");
  }
}

std::int64_t Layout(sqlite3* connection) {
  const Statement statement(connection, "PRAGMA user_version");
  Statement::Run run(statement);
  return run.Next() ? run.Number(0) : 0;
}

std::optional<Version> ReadVersion(const Statement::Run& row, int majorColumn) {
  if (row.IsNull(majorColumn)) return std::nullopt;
  return Version{static_cast<int>(row.Number(majorColumn)),
                 static_cast<int>(row.Number(majorColumn + 1))};
}

struct StoredText {
  std::string section, keyword, value, unit;
  std::int64_t position;
};

void AddTexts(std::vector<StoredText>& texts, Record& record) {
  std::stable_sort(texts.begin(), texts.end(), [](const StoredText& left, const StoredText& right) {
    return left.position < right.position;
  });
  for (const StoredText& text : texts) {
    if (text.section == kForeignSection) {
      record.AddForeignText(text.value);
    } else {
      record.AddStored(text.section, text.keyword, text.value, text.unit, text.position);
    }
  }
}

}  // namespace

// Rolled back unless committed.
class Database::Transaction {
 public:
  Transaction(Database& database, const Statement& begin) : database(database) { begin.Execute(); }
  ~Transaction() {
    if (isDone) return;
    try {
      database.rollback.Execute();
    } catch (...) {
      // The failure that led here has rolled back already.
    }
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit() {
    database.commit.Execute();
    isDone = true;
  }

 private:
  Database& database;
  bool isDone = false;
};

Database::Database(const std::string& file, const DatabaseSettings& settings)
    : connection(Open(file, settings.busyMilliseconds)) {
  if (Layout(connection.get()) == 0) MakeTables(settings.isFlushed);
  if (Layout(connection.get()) != kLayout) {
    throw StoreError("the database was made by another version of this library");
  }
  isReadOnly = sqlite3_db_readonly(connection.get(), "main") == 1;
  if (!isReadOnly) Flush(settings.isFlushed);
  Prepare();
}

void Database::MakeTables(bool isFlushed) {
  // One flush at the end does for all steps.
  Flush(false);
  Run(connection.get(), "PRAGMA journal_mode = WAL");
  Run(connection.get(), "BEGIN IMMEDIATE");
  // Another process may have been first.
  if (Layout(connection.get()) == 0) Run(connection.get(), kTables);
  Run(connection.get(), "COMMIT");
  if (!isFlushed) return;
  Flush(true);
  Run(connection.get(), "PRAGMA wal_checkpoint");
}

void Database::Flush(bool everyChange) {
  Run(connection.get(), everyChange ? "PRAGMA synchronous = FULL" : "PRAGMA synchronous = OFF");
}

void Database::Prepare() {
  const auto prepare = [this](const char* sql) { return Statement(connection.get(), sql); };
  begin = prepare("BEGIN");
  beginWriting = prepare("BEGIN IMMEDIATE");
  commit = prepare("COMMIT");
  rollback = prepare("ROLLBACK");
  findProtocol = prepare("SELECT number, major, minor FROM protocols WHERE id = ?");
  hasNumber = prepare("SELECT 1 FROM protocols WHERE number = ?");
  readTexts = prepare(
      "SELECT sectionName, keywordName, value, unit, position FROM texts WHERE protocol = ?");
  addProtocol = prepare("INSERT INTO protocols(id) VALUES(?)");
  setVersion = prepare("UPDATE protocols SET major = ?, minor = ? WHERE number = ?");
  removeProtocol = prepare("DELETE FROM protocols WHERE number = ?");
  addText = prepare(
      "INSERT INTO texts(protocol, section, keyword, position, sectionName, keywordName, value, "
      "unit)"
      " VALUES(?, ?, ?, ?, ?, ?, ?, ?)"
      " ON CONFLICT DO UPDATE SET value = excluded.value, unit = excluded.unit");
  removeText = prepare("DELETE FROM texts WHERE protocol = ? AND section = ? AND keyword = ?");
  removeAllTexts = prepare("DELETE FROM texts WHERE protocol = ?");
  findOwner = prepare("SELECT window, process, birth FROM owners WHERE id = ?");
  setOwner =
      prepare("INSERT OR REPLACE INTO owners(id, window, process, birth) VALUES(?, ?, ?, ?)");
  removeOwner = prepare("DELETE FROM owners WHERE id = ?");
}

bool Database::Exists(std::string_view id) { return Statement::Run(findProtocol, id).Next(); }

std::optional<StoredProtocol> Database::Load(std::string_view id) {
  StoredProtocol stored;
  std::vector<StoredText> texts;
  Transaction reading(*this, begin);
  {
    Statement::Run row(findProtocol, id);
    if (!row.Next()) return std::nullopt;
    stored.number = row.Number(0);
    stored.record.SetStoredVersion(ReadVersion(row, 1));
  }
  {
    Statement::Run row(readTexts, stored.number);
    while (row.Next()) {
      texts.push_back({std::string(row.Text(0)), std::string(row.Text(1)), std::string(row.Text(2)),
                       std::string(row.Text(3)), row.Number(4)});
    }
  }
  reading.Commit();
  AddTexts(texts, stored.record);
  return stored;
}

std::optional<ProtocolNumber> Database::Save(std::string_view id, ProtocolNumber known,
                                             const Record& record) {
  Transaction writing(*this, beginWriting);
  const auto number = NumberToWrite(id, known);
  if (!number) return std::nullopt;
  WriteVersion(*number, record);
  WriteTexts(*number, record);
  if (record.IsReplaced()) WriteForeignTexts(*number, record);
  writing.Commit();
  return number;
}

std::optional<ProtocolNumber> Database::NumberToWrite(std::string_view id, ProtocolNumber known) {
  if (known != 0) {
    if (Statement::Run(hasNumber, known).Next()) return known;
    return std::nullopt;
  }
  {
    // Made by another process since it was found missing: both have written to the same protocol.
    Statement::Run row(findProtocol, id);
    if (row.Next()) return row.Number(0);
  }
  addProtocol.Execute(id);
  return sqlite3_last_insert_rowid(connection.get());
}

void Database::WriteVersion(ProtocolNumber number, const Record& record) {
  if (!record.IsVersionChanged()) return;
  const Version version = record.CurrentVersion();
  setVersion.Execute(version.major, version.minor, number);
}

void Database::WriteTexts(ProtocolNumber number, const Record& record) {
  if (record.IsReplaced()) removeAllTexts.Execute(number);
  for (const auto& [section, keyword] : record.ErasedKeys()) {
    removeText.Execute(number, section, keyword);
  }
  for (const Section* section : record.Sections()) {
    const std::string foldedSection = FoldedName(section->Name());
    for (const Entry* entry : section->Entries()) {
      if (!entry->isChanged) continue;
      addText.Execute(number, foldedSection, FoldedName(entry->keyword), entry->position,
                      section->Name(), entry->keyword, entry->value, entry->unit);
    }
  }
}

void Database::WriteForeignTexts(ProtocolNumber number, const Record& record) {
  std::int64_t place = 0;
  for (const std::string& text : record.ForeignTexts()) {
    ++place;
    addText.Execute(number, kForeignSection, std::to_string(place), place, kForeignSection,
                    kForeignSection, text, kForeignSection);
  }
}

bool Database::Erase(std::string_view id) {
  Transaction writing(*this, beginWriting);
  ProtocolNumber number = 0;
  {
    Statement::Run row(findProtocol, id);
    if (row.Next()) number = row.Number(0);
  }
  removeOwner.Execute(id);
  removeAllTexts.Execute(number);
  removeProtocol.Execute(number);
  writing.Commit();
  return number != 0;
}

std::vector<std::string> Database::Ids() {
  const Statement statement(connection.get(), "SELECT id FROM protocols ORDER BY number");
  std::vector<std::string> ids;
  Statement::Run row(statement);
  while (row.Next()) ids.emplace_back(row.Text(0));
  return ids;
}

std::string Database::Check() {
  std::string findings;
  const Statement integrity(connection.get(), "PRAGMA integrity_check");
  for (Statement::Run row(integrity); row.Next();) {
    if (row.Text(0) != "ok") findings.append(row.Text(0)).push_back('\n');
  }
  const Statement orphans(connection.get(),
                          "SELECT COUNT(*) FROM texts"
                          " WHERE protocol NOT IN (SELECT number FROM protocols)");
  Statement::Run row(orphans);
  if (row.Next() && row.Number(0) > 0) {
    findings += std::to_string(row.Number(0)) + " texts belong to no protocol\n";
  }
  return findings;
}

std::optional<Owner> Database::FindOwner(std::string_view id) {
  Statement::Run row(findOwner, id);
  if (!row.Next()) return std::nullopt;
  return Owner{static_cast<std::uint32_t>(row.Number(0)), {row.Number(1), row.Number(2)}};
}

void Database::SetOwner(std::string_view id, const Owner& owner) {
  setOwner.Execute(id, static_cast<std::int64_t>(owner.window), owner.process.number,
                   owner.process.birth);
}

void Database::RemoveOwner(std::string_view id) { removeOwner.Execute(id); }

}  // namespace quillmar::keelcomm
