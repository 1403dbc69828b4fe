#include "TallyglassKit/Platform/UserDefaults.h"

#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/ErrorText.h"
#include "TallyglassKit/Platform/Files/FileDescriptor.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/PrivateFile.h"
#include "TallyglassKit/Platform/SystemPaths.h"

#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <sys/file.h>

#include <fstream>
#include <system_error>

namespace tallyglass {

namespace {

using Json = nlohmann::json;

[[noreturn]] void fail(const std::filesystem::path& file, int error = errno) {
    throw Error("The settings could not be saved to " + file.string() + ": " + errorText(error));
}

// Locks the settings against changes by others, until the descriptor is closed.
FileDescriptor lockFile(const std::filesystem::path& file) {
    FileDescriptor descriptor(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!descriptor.isOpen())
        fail(file);
    while (::flock(descriptor.fd(), LOCK_EX) != 0)
        if (errno != EINTR)
            fail(file);
    return descriptor;
}

void writeFile(const std::filesystem::path& file, std::string_view text) {
    try {
        writePrivateFile(file, text);
    } catch (const FileError& error) {
        fail(file, error.code());
    }
}

// The file's object of keys; discarded if the file is missing or broken.
Json read(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    Json settings = Json::parse(stream, nullptr, false);
    return settings.is_object() ? settings : Json(Json::value_t::discarded);
}

std::filesystem::path beside(const std::filesystem::path& file, const char* ending) {
    return std::filesystem::path(file) += ending;
}

void moveFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::error_code failure;
    std::filesystem::rename(from, to, failure);
    if (failure)
        fail(to, failure.value());
}

} // namespace

UserDefaults::UserDefaults(std::filesystem::path file) : m_file(std::move(file)) {}

std::filesystem::path UserDefaults::standardFile() {
    return SystemPaths::applicationSupportFolder() / "Tallyglass" / "defaults.json";
}

std::optional<std::vector<std::string>> UserDefaults::stringArray(std::string_view key) const {
    const Json settings = read(m_file);
    if (settings.is_discarded())
        return std::nullopt;
    const auto found = settings.find(key);
    if (found == settings.end() || !found->is_array())
        return std::nullopt;
    std::vector<std::string> list;
    for (const Json& element : *found) {
        if (!element.is_string())
            return std::nullopt;
        list.push_back(element.get<std::string>());
    }
    return list;
}

void UserDefaults::setStringArray(std::string_view key, const std::vector<std::string>& value) const {
    makePrivateFolder(m_file.parent_path());
    const FileDescriptor locked = lockFile(beside(m_file, ".lock"));

    Json settings = read(m_file);
    if (settings.is_discarded()) {
        if (std::error_code ignored; std::filesystem::exists(m_file, ignored))
            moveFile(m_file, beside(m_file, ".broken"));
        settings = Json::object();
    }
    settings[std::string(key)] = value;

    writeFile(m_file, settings.dump(4, ' ', false, Json::error_handler_t::replace));
}

} // namespace tallyglass
