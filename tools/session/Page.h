// The session as one web page that needs nothing but itself: model, drawings, bill of materials,
// steps, timeline, and every solid to be turned.
#pragma once

#include <string>

#include "session/SessionData.h"

namespace session {

// The machine on which the page's parts lie: the template that is installed with this program, and
// beside each part file the picture and the solid that the CAD wrote.
struct PageSource {
  std::string folder;     // of the template: page.html and the files that it names, a Windows path
  std::string documents;  // of the CAD's documents
};

// A SessionError when the template is not whole. What else cannot be read is left out of the page.
std::string PageText(const SessionData& data, const PageSource& source);

}  // namespace session
