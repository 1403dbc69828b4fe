#include "TallyglassKit/Comparison/ChangeOrder.h"

namespace tallyglass {

std::string_view rawValue(ChangeOrder order) {
    switch (order) {
    case ChangeOrder::path:
        return "path";
    case ChangeOrder::size:
        return "size";
    case ChangeOrder::name:
        break;
    }
    return "name";
}

template <>
std::optional<ChangeOrder> fromRawValue<ChangeOrder>(std::string_view raw) {
    for (const ChangeOrder order : allChangeOrders)
        if (rawValue(order) == raw)
            return order;
    return std::nullopt;
}

} // namespace tallyglass
