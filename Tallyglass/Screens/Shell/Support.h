// How users can support the program.

#pragma once

#include <string_view>

namespace tallyglass {

struct Support {
    /// The donation page of a payment provider. The placeholder in its place means that none is configured.
    static constexpr std::string_view donateURL = "https://donate.example/your-payment-link";

    [[nodiscard]] static constexpr bool isConfigured() {
        return donateURL.find("your-payment-link") == std::string_view::npos;
    }
};

} // namespace tallyglass
