#pragma once
// A folder of its own on the real disk, gone with the test.
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace kvo::testing {

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "kvo-test-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
        m_path = name;
    }
    ~TemporaryFolder() {
        std::error_code error;
        for (std::filesystem::recursive_directory_iterator it(m_path, error), end;
             !error && it != end; it.increment(error)) {
            std::error_code ignored;
            if (it->is_directory(ignored)) {
                std::filesystem::permissions(
                    it->path(), std::filesystem::perms::owner_all, ignored);
            }
        }
        std::filesystem::remove_all(m_path, error);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::string operator/(const std::string& name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

} // namespace kvo::testing
