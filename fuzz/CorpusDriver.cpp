// Runs a harness over saved inputs without libFuzzer: each argument is a file
// or a folder of files, each file one call of LLVMFuzzerTestOneInput. A
// crash or a sanitizer report ends the run, which fails the test.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

int main(int argc, char **argv)
{
    std::vector<std::filesystem::path> files;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path given(argv[i]);
        if (!std::filesystem::is_directory(given)) {
            files.push_back(given);
            continue;
        }
        for (const auto &entry : std::filesystem::directory_iterator(given)) {
            if (entry.is_regular_file())
                files.push_back(entry.path());
        }
    }
    // an empty folder means a wrong path, not a passed test
    if (files.empty()) {
        std::fprintf(stderr, "no inputs given\n");
        return 2;
    }
    std::sort(files.begin(), files.end());
    for (const auto &file : files) {
        std::ifstream in(file, std::ios::binary);
        if (!in) {
            std::fprintf(stderr, "cannot read %s\n", file.c_str());
            return 2;
        }
        const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
        std::fprintf(stderr, "%s\n", file.c_str());
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
    }
    std::fprintf(stderr, "%zu inputs ran\n", files.size());
    return 0;
}
