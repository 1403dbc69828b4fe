#include "TallyglassKit/Comparison/ChangeKind.h"

namespace tallyglass {

namespace {

struct Names {
    std::string_view rawValue;
    std::string_view label;
    std::string_view symbolName;
};

constexpr std::array<Names, allChangeKinds.size()> names{{
    {"added", "Added", "plus.circle.fill"},
    {"removed", "Removed", "minus.circle.fill"},
    {"modified", "Modified", "pencil.circle.fill"},
}};

constexpr const Names& namesOf(ChangeKind kind) {
    return names[static_cast<std::size_t>(kind)];
}

} // namespace

std::string_view rawValue(ChangeKind kind) {
    return namesOf(kind).rawValue;
}

template <>
std::optional<ChangeKind> fromRawValue<ChangeKind>(std::string_view raw) {
    for (const ChangeKind kind : allChangeKinds)
        if (rawValue(kind) == raw)
            return kind;
    return std::nullopt;
}

std::string_view label(ChangeKind kind) {
    return namesOf(kind).label;
}

std::string_view symbolName(ChangeKind kind) {
    return namesOf(kind).symbolName;
}

} // namespace tallyglass
