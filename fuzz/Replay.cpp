// Runs a fuzzer without libFuzzer: all files of a corpus folder, then a number of mutations of them
// that are the same in every run. An input that fails is left in "failed-input".
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

#include "Fuzzing.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

std::vector<Bytes> ReadCorpus(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  std::vector<Bytes> corpus;
  for (const auto& file : files) {
    std::ifstream in(file, std::ios::binary);
    corpus.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  return corpus;
}

// Written before each run, so that it is there when the run ends the process.
void RunOne(const Bytes& input) {
  std::ofstream("failed-input", std::ios::binary)
      .write(reinterpret_cast<const char*>(input.data()),
             static_cast<std::streamsize>(input.size()));
  LLVMFuzzerTestOneInput(input.data(), input.size());
}

class Mutator {
 public:
  explicit Mutator(const std::vector<Bytes>& inputs) : corpus(inputs) {}

  Bytes Next() {
    Bytes bytes = Any();
    for (int count = Below(4) + 1; count > 0; --count) Change(bytes);
    return bytes;
  }

 private:
  // The distributions of the library differ from one to the other; a remainder does not.
  int Below(std::size_t limit) {
    return static_cast<int>(random() % std::max<std::size_t>(limit, 1));
  }
  const Bytes& Any() { return corpus[static_cast<std::size_t>(Below(corpus.size()))]; }

  void Change(Bytes& bytes) {
    const int from = Below(bytes.size() + 1);
    const int length =
        Below(std::min<std::size_t>(bytes.size() - static_cast<std::size_t>(from), 64) + 1);
    const auto begin = bytes.begin() + from;
    const auto end = begin + length;
    switch (Below(5)) {
      case 0:  // cut a piece out
        bytes.erase(begin, end);
        break;
      case 1:  // repeat a piece
        Repeat(bytes, from, length);
        break;
      case 2: {  // the front of another input
        const Bytes& other = Any();
        bytes.insert(begin, other.begin(), other.begin() + Below(other.size() + 1));
        break;
      }
      case 3:  // a byte that often means something
        bytes.insert(begin, static_cast<std::uint8_t>(
                                kMeaningful[static_cast<std::size_t>(Below(sizeof kMeaningful))]));
        break;
      default:
        if (begin != bytes.end()) *begin ^= static_cast<std::uint8_t>(1 << Below(8));
    }
  }

  void Repeat(Bytes& bytes, int from, int length) {
    const Bytes piece(bytes.begin() + from, bytes.begin() + from + length);
    for (int times = Below(8); times > 0; --times) {
      bytes.insert(bytes.begin() + from, piece.begin(), piece.end());
    }
  }

  static constexpr char kMeaningful[] = "\0\n\r\t \"%,;=[]<>@\\|*\xFF\xFE\xEF:()-9";

  const std::vector<Bytes>& corpus;
  std::mt19937 random{20240229};
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s CORPUS-FOLDER MUTATIONS\n", argv[0]);
    return 2;
  }
  const std::vector<Bytes> corpus = ReadCorpus(argv[1]);
  if (corpus.empty()) {
    std::fprintf(stderr, "no corpus in %s\n", argv[1]);
    return 2;
  }
  for (const Bytes& input : corpus) RunOne(input);
  Mutator mutator(corpus);
  for (int count = std::atoi(argv[2]); count > 0; --count) RunOne(mutator.Next());
  std::filesystem::remove("failed-input");
  return 0;
}
