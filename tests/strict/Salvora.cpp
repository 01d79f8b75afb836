// The strict start-up program: shows nothing, leaves a trace in its working folder and stays for a
// moment, so that its end has to be waited for.
#include <chrono>
#include <fstream>
#include <thread>

#include "BecomeIdle.h"

int main() {
  std::ofstream trace("started.txt", std::ios::app);
  trace << "started\n";
  trace.close();
  quillmar::strict::BecomeIdle();
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  return trace ? 0 : 1;
}
