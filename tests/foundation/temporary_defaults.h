#pragma once

#include <zrbasic/platform/foundation/bundle.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/user_defaults.h>

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

namespace zr::test {

/// User defaults of an application "com.example.desk" in a folder that goes with the test, so that no test touches
/// those of whoever runs it.
class TemporaryDefaults : public testing::Test {
  protected:
    TemporaryDefaults() : m_application("Desk", nullptr, nullptr, "com.example.desk") {
        std::string pattern = (std::filesystem::temp_directory_path() / "zrbasic-XXXXXX").string();
        EXPECT_NE(mkdtemp(pattern.data()), nullptr);
        m_place = pattern;
        m_folder = m_place / "defaults";
        m_override.emplace(m_folder.string());
    }
    ~TemporaryDefaults() override {
        for (const Ref<NSString>& name : {NSArgumentDomain(), NSRegistrationDomain()}) {
            defaults->removeVolatileDomainForName(name);
        }
        m_override.reset();
        std::filesystem::remove_all(m_place);
    }

    /// Writes what changed and forgets what is known, as the end of one process and the start of another would.
    void restart() {
        m_override.reset();
        m_override.emplace(m_folder.string());
    }
    /// Uses another folder from now on.
    void moveTo(const std::filesystem::path& folder) {
        m_override.reset();
        m_folder = folder;
        m_override.emplace(m_folder.string());
    }

    [[nodiscard]] std::filesystem::path file(const std::string& name = "com.example.desk.json") const {
        return m_folder / name;
    }
    [[nodiscard]] std::string text(const std::string& name = "com.example.desk.json") const {
        std::ifstream stream(file(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    }
    void write(const std::string& content, const std::string& name = "com.example.desk.json") const {
        std::filesystem::create_directories(m_folder);
        std::ofstream(file(name), std::ios::binary) << content;
    }
    /// The names in the folder that are not hidden, in ascending order with one blank between them.
    [[nodiscard]] std::string files() const {
        std::vector<std::string> names;
        std::error_code reason;
        for (const auto& entry : std::filesystem::directory_iterator(m_folder, reason)) {
            if (entry.path().filename().string().front() != '.') {
                names.push_back(entry.path().filename().string());
            }
        }
        std::sort(names.begin(), names.end());
        std::string all;
        for (const std::string& name : names) {
            all += (all.empty() ? "" : " ") + name;
        }
        return all;
    }

    const BundleInformation m_application;
    std::filesystem::path m_place;
    std::filesystem::path m_folder;
    std::optional<UserDefaultsFolderOverride> m_override;
    const Ref<NSUserDefaults> defaults = NSUserDefaults::standardUserDefaults();
};

} // namespace zr::test
