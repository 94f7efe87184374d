#include <cstdio>
#include <exception>
#include <string_view>

#include "benchmarks/ContactWork.h"
#include "benchmarks/GroupListWork.h"
#include "benchmarks/GroupWork.h"
#include "benchmarks/ImportWork.h"
#include "benchmarks/LineWork.h"
#include "benchmarks/ListWork.h"
#include "benchmarks/Load.h"
#include "benchmarks/ToolWork.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs(
        "usage: benchmarks DATABASE...   (smallest first)\n"
        "       benchmarks --groups DATABASE\n"
        "       benchmarks --grouplists DATABASE\n"
        "       benchmarks --tool DATABASE...\n"
        "       benchmarks --import DATABASE     (its contacts go)\n"
        "       benchmarks --server CONNECTION   (its contacts go)\n"
        "       benchmarks --line CONNECTION     (its rows go)\n",
        stderr);
    return 2;
  }
  try {
    if (argv[1] == std::string_view("--groups") && argc == 3) {
      ktrv::benchmarks::MeasureGroupWork(argv[2]);
      return 0;
    }
    if (argv[1] == std::string_view("--grouplists") && argc == 3) {
      ktrv::benchmarks::MeasureGroupLists(argv[2]);
      return 0;
    }
    if (argv[1] == std::string_view("--tool") && argc > 2) {
      ktrv::benchmarks::MeasureToolWork({argv + 2, argv + argc});
      return 0;
    }
    if (argv[1] == std::string_view("--import") && argc == 3) {
      ktrv::benchmarks::MeasureImport(argv[2]);
      return 0;
    }
    if (argv[1] == std::string_view("--line") && argc == 3) {
      ktrv::benchmarks::MeasureLineWork(argv[2]);
      return 0;
    }
    if (argv[1] == std::string_view("--server") && argc == 3) {
      ktrv::benchmarks::MeasureLoad({argv[2]});
      ktrv::benchmarks::MeasureContactWork({argv[2]});
      ktrv::benchmarks::MeasureImport(argv[2]);
      return 0;
    }
    ktrv::benchmarks::MeasureLoad({argv + 1, argv + argc});
    ktrv::benchmarks::MeasureListWork({argv + 1, argv + argc});
    ktrv::benchmarks::MeasureContactWork({argv + 1, argv + argc});
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "benchmarks: %s\n", error.what());
    return 1;
  }
}
