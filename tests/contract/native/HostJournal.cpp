#include "HostJournal.h"

namespace quillmar::contract {

struct HostJournal::Backend {};

HostJournal::HostJournal(const HostSide&) {}
HostJournal::~HostJournal() = default;

}  // namespace quillmar::contract
