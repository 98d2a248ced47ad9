#include <cstdio>

#include <dlfcn.h>

// Does not link the library, which is named on the command line.
int main(int argc, char** argv) {
    if (argc != 2) {
        return 2;
    }
    if (!dlopen(argv[1], RTLD_NOW)) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    return 0;
}
