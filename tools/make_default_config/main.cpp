// Makes packaging/Kvo.Cfg, the configuration of a new installation.
#include "core/config.h"
#include "core/default_config.h"
#include "platform/system_path.h"
#include "tools/command_line/command_line.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

using kvo::platform::Bytes;

Bytes defaultFile() {
    return encodeConfig(kvo::core::defaultConfig());
}

bool isDefault(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return file && Bytes(std::istreambuf_iterator<char>(file), {}) == defaultFile();
}

bool write(const std::filesystem::path& path) {
    const Bytes content = defaultFile();
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(content.data()),
        static_cast<std::streamsize>(content.size()));
    file.close();
    return file.good();
}

} // namespace

int main(int argc, char** argv) {
    const kvo::command_line::Syntax syntax{"make_default_config [--compare] FILE",
        "Writes the configuration of a new installation to FILE. With --compare it\n"
        "only looks whether FILE is what would be written; if not, the exit code is\n"
        "1.\n",
        1, 1, {"--compare"}};
    const auto arguments = kvo::command_line::read(syntax, argc, argv);
    if (arguments.exitCode) return *arguments.exitCode;
    const std::string& name = arguments.operands[0];
    const std::filesystem::path file = kvo::platform::systemPath(name);
    if (!arguments.has("--compare")) return write(file) ? 0 : 1;
    if (isDefault(file)) return 0;
    std::fprintf(stderr, "%s is not the default configuration; make it again\n", name.c_str());
    return 1;
}
