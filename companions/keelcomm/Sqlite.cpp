#include "keelcomm/Sqlite.h"

namespace quillmar::keelcomm {

void ThrowLastError(sqlite3* connection, const char* what) {
  throw StoreError(std::string(what) + ": " + sqlite3_errmsg(connection));
}

Statement::Statement(sqlite3* connection, const char* sql) {
  sqlite3_stmt* prepared = nullptr;
  if (sqlite3_prepare_v3(connection, sql, -1, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr) !=
      SQLITE_OK) {
    ThrowLastError(connection, "the database cannot be used");
  }
  statement.reset(prepared);
}

Statement::Run::~Run() {
  sqlite3_reset(statement);
  // Bound texts belong to the caller of this run.
  sqlite3_clear_bindings(statement);
}

bool Statement::Run::Next() {
  const int result = sqlite3_step(statement);
  if (result == SQLITE_ROW) return true;
  if (result != SQLITE_DONE) ThrowLastError(sqlite3_db_handle(statement), "the database failed");
  return false;
}

bool Statement::Run::IsNull(int column) const {
  return sqlite3_column_type(statement, column) == SQLITE_NULL;
}

std::string_view Statement::Run::Text(int column) const {
  const void* bytes = sqlite3_column_blob(statement, column);
  const int size = sqlite3_column_bytes(statement, column);
  return {static_cast<const char*>(bytes), static_cast<std::size_t>(size)};
}

void Statement::Run::Bind(int place, std::string_view bytes) {
  // An empty view may hold a null pointer, which would bind NULL.
  sqlite3_bind_blob(statement, place, bytes.empty() ? "" : bytes.data(),
                    static_cast<int>(bytes.size()), SQLITE_STATIC);
}

}  // namespace quillmar::keelcomm
