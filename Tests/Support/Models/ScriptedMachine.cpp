#include "Tests/Support/Models/ScriptedMachine.h"

#include "TallyglassKit/Access/BackupPath.h"

#include <fmt/chrono.h>

#include <filesystem>
#include <fstream>

namespace tallyglass::test {

namespace fs = std::filesystem;

ScriptedMachine::ScriptedMachine()
    : cache(std::make_shared<CacheSession>(TMUtilRunner(paths().path(TMUtilRunner::executablePath)),
                                           cacheFile())) {
    const auto tool = m_folder.write("usr/bin/tmutil", fmt::format(R"(#!/bin/sh
cd '{}' || exit 99
echo "$1" >> calls
[ -e answers/delay ] && sleep $(cat answers/delay)
while [ -e "answers/$1.hold" ]; do sleep 0.05; done
[ -e "answers/$1.error" ] && {{ cat "answers/$1.error" >&2; exit 1; }}
[ -e "answers/$1" ] && cat "answers/$1"
exit 0
)",
                                                                   m_folder.path().string()));
    fs::permissions(tool, fs::perms::owner_all);
    setStatus("Running = 0;");
}

void ScriptedMachine::answer(const std::string& verb, const std::string& output) const {
    fs::remove(m_folder / "answers" / (verb + ".error"));
    m_folder.write("answers/" + verb, output);
    fs::remove(m_folder / "answers" / (verb + ".hold"));
}

void ScriptedMachine::fail(const std::string& verb, const std::string& error) const {
    m_folder.write("answers/" + verb + ".error", error);
}

void ScriptedMachine::delay(const std::string& seconds) const {
    m_folder.write("answers/delay", seconds);
}

void ScriptedMachine::hold(const std::string& verb) const {
    m_folder.write("answers/" + verb + ".hold", "");
}

Date ScriptedMachine::dateOfBackup(int index, int count) const {
    return *now - std::chrono::hours(24 * (count - index));
}

std::vector<std::string> ScriptedMachine::setBackups(int count) const {
    std::vector<std::string> roots;
    std::string listing;
    for (int index = 0; index < count; ++index) {
        const std::string name = BackupPath::stamp(dateOfBackup(index, count)) + ".backup";
        const auto root = m_folder / "Volumes/.timemachine/U" / name / name;
        fs::create_directories(root / "Data");
        roots.push_back(root.string());
        listing += root.string() + "\n";
    }
    answer("listbackups", listing);
    return roots;
}

void ScriptedMachine::setAdded(const std::string& root, const std::vector<std::string>& names) const {
    std::string text = "<plist version=\"1.0\"><dict><key>Changes</key><array>";
    for (const auto& name : names)
        text += fmt::format("<dict><key>AddedItem</key><dict><key>Path</key><string>{}/Data/{}</string>"
                            "{}</dict></dict>",
                            root, name.substr(0, name.size() - name.ends_with('/')),
                            name.ends_with('/') ? "" : "<key>Size</key><integer>10</integer>");
    answer("compare", text + "</array></dict></plist>");
}

void ScriptedMachine::setTouched(const std::string& older, const std::string& newer,
                                 const std::vector<std::string>& names) const {
    const auto item = [](const char* key, const std::string& root, const std::string& name) {
        return fmt::format("<key>{}</key><dict><key>Path</key><string>{}/Data/{}</string>"
                           "<key>Size</key><integer>10</integer></dict>",
                           key, root, name);
    };
    std::string text = "<plist version=\"1.0\"><dict><key>Changes</key><array>";
    for (const auto& name : names)
        text += "<dict>" + item("OlderItem", older, name) + item("NewerItem", newer, name) +
                "<key>Differences</key><array><string>mtime</string></array></dict>";
    answer("compare", text + "</array></dict></plist>");
}

void ScriptedMachine::setStatus(const std::string& entries) const {
    answer("status", "Backup session status:\n{\n" + entries + "\n}\n");
}

void ScriptedMachine::setDestinations(const std::vector<std::string>& identifiers, int backups) const {
    std::string dates;
    for (int age = backups; age > 0; --age)
        dates += fmt::format("<date>{:%FT%TZ}</date>",
                             fmt::gmtime(static_cast<std::time_t>(secondsSince1970(*now)) - age * 3600));
    std::string destinations;
    for (const auto& identifier : identifiers)
        destinations += "<dict><key>DestinationID</key><string>" + identifier +
                        "</string><key>SnapshotDates</key><array>" + dates + "</array></dict>";
    m_folder.write("Library/Preferences/com.apple.TimeMachine.plist",
                   "<plist><dict><key>AutoBackup</key><true/><key>Destinations</key><array>" + destinations +
                       "</array></dict></plist>");
}

void ScriptedMachine::setManifest(int xid) const {
    m_folder.write(ManifestReader::exportPath.substr(1),
                   fmt::format("<plist><array><date>2026-07-20T12:29:43Z</date><dict><key>xid</key>"
                               "<integer>{}</integer></dict></array></plist>",
                               xid));
}

void ScriptedMachine::grantAccess() const {
    m_folder.write(FullDiskAccessProbe::canaryPath.substr(1), "");
}

std::vector<std::string> ScriptedMachine::calls() const {
    std::vector<std::string> calls;
    std::ifstream file(m_folder / "calls");
    for (std::string line; std::getline(file, line);)
        calls.push_back(line);
    return calls;
}

AppEnvironment ScriptedMachine::environment() const {
    AppEnvironment environment(paths());
    environment.clock = [now = now] { return *now; };
    environment.makeTimer = FakeTimer::factory(timer);
    environment.cache = cache;
    environment.defaults = UserDefaults(defaultsFile());
    environment.desktopFolder = [desktop = m_folder / "Desktop"] { return desktop; };
    return environment;
}

} // namespace tallyglass::test
