// The strict start-up program: shows nothing and leaves a trace in its working folder.
#include <fstream>

int main() {
  std::ofstream trace("started.txt", std::ios::app);
  trace << "started\n";
  return trace ? 0 : 1;
}
