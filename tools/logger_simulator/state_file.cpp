#include "tools/logger_simulator/state_file.h"

#include "platform/system_path.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace kvo::simulator {

namespace fs = std::filesystem;

std::optional<HeaderBytes> readState(const std::string& path, std::string& error) {
    const fs::path place = platform::systemPath(path);
    std::error_code failure;
    if (!fs::exists(place, failure) && !failure) return std::nullopt;
    std::ifstream file(place, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    HeaderBytes settings{};
    if (!file || bytes.size() != settings.size()) {
        error = path + ": cannot be read, or is not 32 bytes long";
        return std::nullopt;
    }
    std::copy(bytes.begin(), bytes.end(), settings.begin());
    return settings;
}

bool writeState(const std::string& path, const HeaderBytes& settings, std::string& error) {
    const fs::path beside = platform::systemPath(path + ".new");
    std::ofstream file(beside, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(settings.data()),
        static_cast<std::streamsize>(settings.size()));
    file.close();
    std::error_code failure;
    if (file) fs::rename(beside, platform::systemPath(path), failure);
    if (file && !failure) return true;
    error = path + ": cannot be written";
    return false;
}

} // namespace kvo::simulator
