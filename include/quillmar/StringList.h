/** @file
 * The list of texts that Quillmar and the storage library hand each other (Com_GetBuffer,
 * Com_PutBuffer).
 *
 * In the Windows build it has the memory layout of the suite's common framework, version 4.2, so
 * that each side reads the other's lists in place: an object (virtual-table pointer, head, tail,
 * count, free list, block list, block size), nodes (next, previous, text), and texts that are
 * preceded by a reference count, a length and a capacity. Neither side frees, or adds nodes to,
 * what the other made.
 *
 * Texts made here carry the reference count -1, "never share": a framework that copies one takes
 * a real copy instead of counting a reference into memory that it does not own.
 */
#ifndef QUILLMAR_STRINGLIST_H
#define QUILLMAR_STRINGLIST_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Stands directly in front of the characters of each text. */
typedef struct QmTextHeader {
  int32_t references; /**< -1: never share */
  int32_t length;     /**< characters without the NUL */
  int32_t capacity;   /**< characters that fit without the NUL */
} QmTextHeader;

/** One text of a list. */
typedef struct QmStringNode {
  struct QmStringNode* next;     /**< null at the end */
  struct QmStringNode* previous; /**< null at the beginning */
  char* text;                    /**< points behind its QmTextHeader; never null */
} QmStringNode;

/** The list itself. */
typedef struct QmStringList {
  const void* virtualTable; /**< of the framework's class, or of one whose functions do nothing */
  QmStringNode* head;       /**< first text; null in an empty list */
  QmStringNode* tail;       /**< last text; null in an empty list */
  int32_t count;            /**< texts */
  QmStringNode* freeNodes;  /**< the owner's spare nodes */
  void* blocks;             /**< the owner's memory for nodes */
  int32_t blockSize;        /**< nodes that the owner allocates at once */
} QmStringList;

#ifdef __cplusplus
} /* extern "C" */

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#if defined(_WIN32)
static_assert(sizeof(QmTextHeader) == 12 && sizeof(QmStringNode) == 12);
static_assert(sizeof(QmStringList) == 28);
static_assert(offsetof(QmStringNode, next) == 0 && offsetof(QmStringNode, previous) == 4 &&
              offsetof(QmStringNode, text) == 8);
static_assert(offsetof(QmStringList, virtualTable) == 0 && offsetof(QmStringList, head) == 4 &&
              offsetof(QmStringList, tail) == 8 && offsetof(QmStringList, count) == 12 &&
              offsetof(QmStringList, freeNodes) == 16 && offsetof(QmStringList, blocks) == 20 &&
              offsetof(QmStringList, blockSize) == 24);
#endif

namespace quillmar {

/** The texts of a list in order, whoever made it. Stops at the end of the chain or when the list's
 * own count is reached. Texts are read up to their NUL, which the framework always writes; the
 * header is not looked at, so that a library whose texts lack it is understood as well. */
inline std::vector<std::string_view> TextsOf(const QmStringList* list) {
  std::vector<std::string_view> texts;
  if (list == nullptr || list->count <= 0) return texts;
  texts.reserve(static_cast<std::size_t>(list->count));
  const QmStringNode* node = list->head;
  for (int32_t i = 0; i < list->count && node != nullptr; ++i, node = node->next) {
    texts.emplace_back(node->text != nullptr ? node->text : "");
  }
  return texts;
}

/** A list of our own, to be handed to the other side for reading. It owns its nodes and texts and
 * lives as long as the other side may read it. */
class StringList {
 public:
  /** Copies the texts. */
  explicit StringList(const std::vector<std::string_view>& texts) {
    nodes.resize(texts.size());
    std::size_t bytes = 0;
    for (std::string_view text : texts) bytes += Footprint(text.size());
    storage = std::make_unique<std::byte[]>(bytes + 1);
    std::byte* place = storage.get();
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const auto length = static_cast<int32_t>(texts[i].size());
      const QmTextHeader header{-1, length, length};
      std::memcpy(place, &header, sizeof header);
      char* characters = reinterpret_cast<char*>(place + sizeof header);
      if (length > 0) std::memcpy(characters, texts[i].data(), texts[i].size());
      characters[length] = '\0';
      nodes[i] = {i + 1 < nodes.size() ? &nodes[i + 1] : nullptr, i > 0 ? &nodes[i - 1] : nullptr,
                  characters};
      place += Footprint(texts[i].size());
    }
    list = {VirtualTable(),
            nodes.empty() ? nullptr : &nodes.front(),
            nodes.empty() ? nullptr : &nodes.back(),
            static_cast<int32_t>(nodes.size()),
            nullptr,
            nullptr,
            10};
  }

  StringList(const StringList&) = delete;
  StringList& operator=(const StringList&) = delete;

  /** Valid as long as this object lives. */
  QmStringList* Get() { return &list; }

 private:
  /* Bytes that a text of `length` characters takes, kept a multiple of 4 so that the next text's
   * header is aligned. */
  static std::size_t Footprint(std::size_t length) {
    return (sizeof(QmTextHeader) + length + 1 + 3) / 4 * 4;
  }

  /* The framework never calls a virtual function of a list that it only reads; should it do so
   * all the same, it finds functions that do nothing. */
  static const void* VirtualTable() {
    using Slot = void* (*)();
    static const Slot slots[] = {&DoNothing, &DoNothing, &DoNothing, &DoNothing, &DoNothing};
    return static_cast<const void*>(slots);
  }
  static void* DoNothing() { return nullptr; }

  std::vector<QmStringNode> nodes;
  std::unique_ptr<std::byte[]> storage;
  QmStringList list{};
};

}  // namespace quillmar
#endif /* __cplusplus */

#endif /* QUILLMAR_STRINGLIST_H */
