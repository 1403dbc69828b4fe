// How users can support the program: the donation page of a payment provider. Any thread.

#pragma once

#include <QString>

namespace tallyglass {

struct Support {
    /// The link that this build was configured with.
    [[nodiscard]] static QString paymentLink();

    /// False for the placeholder, which means that none is configured.
    [[nodiscard]] static bool isSet(const QString& link);
};

} // namespace tallyglass
