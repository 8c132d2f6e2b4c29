#include "fitxategiak.h"

#include <sys/stat.h>

bool file_exists(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0;
}
