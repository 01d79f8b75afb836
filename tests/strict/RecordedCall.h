// Implements any function of a contract that only has to be recorded and answered: its arguments
// go to the journal, its outputs and its result come from the answers that were laid down (see
// StrictCore.h); without an answer it succeeds and hands out empty texts and zeros.
//
// A list buffer (`char* text, int* size`) always asks for a second call before it hands out a text
// that is not empty.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "quillmar/Conventions.h"

namespace quillmar::strict {

class RecordedCall {
 public:
  // `argumentNames` as it stands in the contract's list: "(key, text, size)".
  RecordedCall(const char* function, const char* argumentNames);

  template <class... Arguments>
  int Perform(Arguments... arguments) {
    (Take(arguments), ...);
    return Finish();
  }

 private:
  struct TextOutput {
    char* buffer;
    std::string name;
  };
  struct ListOutput {
    char* buffer;
    int* size;
    std::string name;
  };

  void Take(const char* text);
  void Take(int number);
  void Take(QmWindow window);
  void Take(double number);
  void Take(const double* numbers);
  void Take(const ExtDataPair* pairs);
  void Take(char* text);
  void Take(int* number);
  void Take(QmWindow* window);
  void Take(double* number);
  void Take(const void* pointer);

  std::string NextName();
  void Note(const std::string& argument);
  void Violate(const std::string& promise);
  const char* AnswerFor(const std::string& output) const;
  template <class Number>
  void FillNumber(Number* output, Number (*convert)(const char*));
  void HandOutTexts();
  bool HandOutList(const ListOutput& list);
  int Finish();

  std::string function;
  int call;
  std::vector<std::string> names;
  std::size_t nextName = 0;
  std::string key;  // the first text argument
  bool hasKey = false;
  bool sound = true;
  int lastNumber = 0;
  const ExtDataPair* pairs = nullptr;
  bool awaitsPairCount = false;
  std::vector<TextOutput> texts;
  std::vector<ListOutput> lists;
};

}  // namespace quillmar::strict
