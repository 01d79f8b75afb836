// A protocol's buffer: the whole record written as a list of texts, and read back from one.
//
// Each item of ours is "KC1|", a kind and fields, all separated by "|":
//
//   KC1|V|<major>|<minor>                    the version; stands first
//   KC1|K|<section>|<keyword>|<value>        a keyword
//   KC1|D|<section>|<keyword>|<value>|<unit> a keyword with a unit: a data parameter
//   KC1|T|<text>                             a text of another maker that cannot stand as it is
//
// Inside a field "%", "|", "<" and every byte that is not printable ASCII are written "%XX", two
// upper-case hex digits. So an item holds no line end, no byte of any code page and never "<@",
// which begins the markers of reference texts.
//
// Any other text was made by somebody else. It is kept and handed out again as it came, behind our
// own items, unless it holds "<@". Nothing at all is written for a record that nobody wrote to.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "keelcomm/Record.h"

namespace quillmar::keelcomm {

std::vector<std::string> BufferItemsOf(const Record& record);

// The record that a list of items stands for; nothing when an item that begins as one of ours is
// malformed. An item given twice counts as written twice: the later value stands.
std::optional<Record> RecordFromItems(const std::vector<std::string_view>& items);

}  // namespace quillmar::keelcomm
