#include <cstdio>
#include <exception>

#include "benchmarks/ListWork.h"
#include "benchmarks/Load.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: benchmarks DATABASE...   (smallest first)\n", stderr);
    return 2;
  }
  try {
    ktrv::benchmarks::MeasureLoad({argv + 1, argv + argc});
    ktrv::benchmarks::MeasureListWork({argv + 1, argv + argc});
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "benchmarks: %s\n", error.what());
    return 1;
  }
}
