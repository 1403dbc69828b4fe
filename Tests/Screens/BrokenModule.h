// A module of Qt's that can't be imported while this lives, since a part that it needs isn't installed.

#pragma once

#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/Variable.h"

#include <algorithm>
#include <string>

namespace tallyglass::test {

class BrokenModule {
public:
    static constexpr auto missingPart = "module \"Missing.Part\" is not installed";

    /// `name` as an import names it. Engines and programs that start from now on meet it.
    explicit BrokenModule(const std::string& name) {
        std::string path = name;
        std::ranges::replace(path, '.', '/');
        m_folder.write(path + "/qmldir", "module " + name + "\nimport Missing.Part\n");
    }

private:
    TemporaryFolder m_folder;
    Variable m_importPath{"QML_IMPORT_PATH", m_folder.path()}; // comes before Qt's own folder
};

} // namespace tallyglass::test
