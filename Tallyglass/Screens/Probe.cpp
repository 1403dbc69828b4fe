#include "Tallyglass/Screens/Probe.h"
namespace tallyglass {
QString Probe::words() const {
    return QStringLiteral("hello");
}
} // namespace tallyglass
