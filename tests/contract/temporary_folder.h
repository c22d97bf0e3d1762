#pragma once
// A folder of its own on the real disk, gone with the test.
#include "platform/system_path.h"

#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>

namespace kvo::testing {

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device chance;
        const auto place = std::filesystem::temp_directory_path();
        for (int attempt = 0; attempt < 100; ++attempt) {
            m_path = place / ("kvo-test-" + std::to_string(chance()));
            if (!std::filesystem::create_directory(m_path)) continue;
            std::filesystem::permissions(m_path, std::filesystem::perms::owner_all);
            return;
        }
        throw std::runtime_error("no temporary folder");
    }
    ~TemporaryFolder() {
        std::error_code error;
        for (std::filesystem::recursive_directory_iterator it(m_path, error), end;
             !error && it != end; it.increment(error)) {
            std::error_code ignored; // one system does not delete what is marked as read-only
            if (!it->is_symlink(ignored)) {
                std::filesystem::permissions(
                    it->path(), std::filesystem::perms::owner_all, ignored);
            }
        }
        std::filesystem::remove_all(m_path, error);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::string operator/(const std::string& name) const {
        return platform::pathText(m_path / platform::systemPath(name));
    }

private:
    std::filesystem::path m_path;
};

} // namespace kvo::testing
