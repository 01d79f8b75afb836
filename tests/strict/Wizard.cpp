// The strict data wizard: leaves its arguments, one a line, in its working folder.
#include <fstream>

int main(int argumentCount, char** arguments) {
  std::ofstream file("wizard.txt");
  for (int i = 1; i < argumentCount; ++i) file << arguments[i] << "\n";
  return file ? 0 : 1;
}
