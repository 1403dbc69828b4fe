#include "Tallyglass/Screens/Diagnostics/Support.h"

namespace tallyglass {

QString Support::paymentLink() {
    return QStringLiteral(TALLYGLASS_PAYMENT_LINK);
}

bool Support::isSet(const QString& link) {
    return !link.contains(QStringLiteral("your-payment-link"));
}

} // namespace tallyglass
