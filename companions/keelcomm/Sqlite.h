// A SQLite connection and its statements, released with their objects. Failures are thrown.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quillmar::keelcomm {

// Something the database refused; the text says what and why, for a person to read.
class StoreError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct CloseConnection {
  void operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }
};
using Connection = std::unique_ptr<sqlite3, CloseConnection>;

[[noreturn]] void ThrowLastError(sqlite3* connection, const char* what);

// A statement that is prepared once and run many times. Texts are bound and read as bytes.
class Statement {
 public:
  Statement() = default;
  Statement(sqlite3* connection, const char* sql);

  // One run of the statement; it is reset at the end of the run's life.
  class Run {
   public:
    template <typename... Values>
    explicit Run(const Statement& statement, const Values&... values)
        : statement(statement.statement.get()) {
      int place = 0;
      (Bind(++place, values), ...);
    }
    ~Run();
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    // True when there is a row to read.
    bool Next();
    std::int64_t Number(int column) const { return sqlite3_column_int64(statement, column); }
    bool IsNull(int column) const;
    // Valid until the next row.
    std::string_view Text(int column) const;

   private:
    void Bind(int place, std::int64_t value) { sqlite3_bind_int64(statement, place, value); }
    void Bind(int place, int value) { sqlite3_bind_int(statement, place, value); }
    void Bind(int place, std::string_view bytes);
    void Bind(int place, std::nullptr_t) { sqlite3_bind_null(statement, place); }

    sqlite3_stmt* statement;
  };

  template <typename... Values>
  void Execute(const Values&... values) const {
    Run run(*this, values...);
    while (run.Next()) {
    }
  }

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  std::unique_ptr<sqlite3_stmt, Finalize> statement;
};

}  // namespace quillmar::keelcomm
