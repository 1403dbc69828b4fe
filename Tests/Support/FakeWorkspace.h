// A workspace that opens nothing and remembers what it was asked for.

#pragma once

#include "Tallyglass/Desktop/Workspace.h"

#include <string>
#include <vector>

namespace tallyglass::test {

class FakeWorkspace : public Workspace {
public:
    bool openUrl(const QUrl& url) override {
        requests.push_back("open " + url.toString().toStdString());
        return true;
    }
    void reveal(const std::filesystem::path& item) override { requests.push_back("reveal " + item.string()); }

    std::vector<std::string> requests;
};

} // namespace tallyglass::test
