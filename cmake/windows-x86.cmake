set(CMAKE_SYSTEM_PROCESSOR i686)
set(KTRV_TRIPLET i686-w64-mingw32)
include("${CMAKE_CURRENT_LIST_DIR}/windows.cmake")

# GCC splits functions into a hot and a cold part, which can be empty. The unwinder of 32-bit programs
# may find the entry of an empty part instead of that of the code at the same address. Then nothing
# catches an exception that passes through this code.
add_compile_options("$<$<COMPILE_LANGUAGE:C,CXX>:-fno-reorder-blocks-and-partition>")
