// The entry points of the link library, without their border. Links are kept in the protocol's own
// record, so that they travel in its buffer:
//
//   section "LinksFrom"       link name = link text                     incoming links
//   section "LinksFromState"  link name = "<enabled>,<level>,<second level>", when not "1,0,0"
//   section "LinksTo"         protocol identifier = link names          outgoing links
//
// An outgoing link is a pair of a name (the first text) and the protocol that it leads to (the
// second text). Names of several links to one protocol are separated by ","; in a name "%" and ","
// are written "%25" and "%2C". Links are numbered in the order of these sections.
#pragma once

#include "quillmar/Links.h"

namespace quillmar::keellink::functions {

#define QM_DECLARE(name, result, parameters, names) result name parameters;
QM_LINK_FUNCTIONS(QM_DECLARE)
#undef QM_DECLARE

}  // namespace quillmar::keellink::functions
