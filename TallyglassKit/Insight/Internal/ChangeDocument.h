// The text of exported rows in each format. Pure; any thread.

#pragma once

#include "TallyglassKit/Insight/ChangeExport.h"

#include <string>

namespace tallyglass {

struct ChangeRecord;

/// Appends the parts of a document in their order: its start, its rows, its end.
class ChangeDocument {
public:
    explicit ChangeDocument(ExportFormat format) : m_format(format) {}

    void start(std::string& text) const;
    void append(const ChangeRecord& row, std::string& text);
    void end(std::string& text) const;

private:
    const ExportFormat m_format;
    bool m_hasRows = false;
};

} // namespace tallyglass
