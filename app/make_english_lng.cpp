// Writes the program folder's "english_lng" from the windows' text tables,
// so that the shipped file and the built-in English cannot drift apart.
#include <cstdio>
#include <fstream>

#include "app/language_catalog.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_english_lng OUTPUT\n");
    return 2;
  }
  std::ofstream out(argv[1], std::ios::binary | std::ios::trunc);
  out << kp::LanguageFileOfTables();
  return out.good() ? 0 : 1;
}
