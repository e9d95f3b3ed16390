// Runs a fuzz target once on every file of the folders (or the files) given,
// in name order, without libFuzzer: the corpus as a test in ordinary builds.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv)
{
    std::vector<std::filesystem::path> inputs;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path given(argv[i]);
        if (std::filesystem::is_directory(given)) {
            for (const auto& entry : std::filesystem::directory_iterator(given)) {
                if (entry.is_regular_file())
                    inputs.push_back(entry.path());
            }
        } else {
            inputs.push_back(given);
        }
    }
    std::sort(inputs.begin(), inputs.end());
    for (const auto& path : inputs) {
        std::ifstream file(path, std::ios::binary);
        if (!file) {
            std::fprintf(stderr, "cannot read %s\n", path.c_str());
            return 1;
        }
        const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    }
    std::printf("%zu inputs replayed\n", inputs.size());
    // An empty corpus checks nothing.
    return inputs.empty() ? 1 : 0;
}
