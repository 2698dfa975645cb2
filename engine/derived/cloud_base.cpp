#include "engine/derived/cloud_base.h"

#include <cmath>

namespace nimbry {

CloudBase cloud_base(double temperature, double dew_point) {
    const double metres = 125 * (temperature - dew_point);
    return {static_cast<int>(std::trunc(metres)), static_cast<int>(std::trunc(metres * 3.28))};
}

}  // namespace nimbry
