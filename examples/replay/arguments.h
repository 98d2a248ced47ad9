#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace replay {

/// Walks over the arguments; an option's value may follow it or be joined to it by "=".
class Arguments {
  public:
    Arguments(int count, const char* const* arguments) : m_count(count), m_arguments(arguments) {}

    [[nodiscard]] bool next() {
        if (++m_index >= m_count) {
            return false;
        }
        m_name = m_arguments[m_index];
        m_value = nullptr;
        const std::size_t equals = m_name.find('=');
        if (m_name.substr(0, 2) == "--" && equals != std::string_view::npos) {
            m_value = m_arguments[m_index] + equals + 1;
            m_name = m_name.substr(0, equals);
        }
        return true;
    }

    [[nodiscard]] std::string_view name() const { return m_name; }
    [[nodiscard]] bool hasJoinedValue() const { return m_value != nullptr; }

    /// The option's value; false when there is none.
    [[nodiscard]] bool takeValue(std::string& value) {
        if (!m_value && m_index + 1 < m_count) {
            m_value = m_arguments[++m_index];
        }
        value = m_value ? m_value : "";
        return !value.empty();
    }

    /// Sets the values of the options that it knows; false for another option, and for one without a value.
    [[nodiscard]] bool readInto(std::map<std::string, std::string, std::less<>>& options) {
        while (next()) {
            const auto option = options.find(m_name);
            if (option == options.end() || !takeValue(option->second)) {
                return false;
            }
        }
        return true;
    }

  private:
    int m_count;
    const char* const* m_arguments;
    int m_index = 0;
    std::string_view m_name;
    const char* m_value = nullptr;
};

} // namespace replay
