// Something to harden: a buffer on the stack, filled from outside.

#include <cstdio>
#include <cstring>

int main(int argc, char** argv) {
  char text[16];
  std::strcpy(text, argc > 1 ? argv[1] : "");
  std::puts(text);
}
