/* Linked with the module: one function of the C convention, one of the standard one. */
#include <quillmar/Exports.h>

int main(void) { return LogoutCad() == 1 && ObtainProtocol("nothing") == 0 ? 0 : 1; }
