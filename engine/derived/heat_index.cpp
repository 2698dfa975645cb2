#include "engine/derived/heat_index.h"

#include "engine/derived/number_text.h"

namespace nimbry {

double heat_index_sum(double temperature, double humidity) {
    const double t = temperature;
    const double r = humidity;
    const double t2 = t * t;
    const double t3 = t2 * t;
    const double r2 = r * r;
    const double r3 = r2 * r;
    // One sum in this order: another order would move the last digits.
    return 16.923 + 0.185212 * t + 5.37941 * r - 0.100254 * t * r + 0.00941695 * t2 + 0.00728898 * r2 +
           0.000345372 * t2 * r - 0.000814971 * t * r2 + 0.0000102102 * t2 * r2 - 0.000038646 * t3 + 0.0000291583 * r3 +
           0.00000142721 * t3 * r + 0.000000197483 * t * r3 - 0.0000000218429 * t3 * r2 + 0.000000000843296 * t2 * r3 -
           0.0000000000481975 * t3 * r3;
}

HeatIndex heat_index(double temperature, double humidity) {
    const double fahrenheit = Round(heat_index_sum(temperature * 9 / 5 + 32, humidity), 1);
    return {fahrenheit, Round((fahrenheit - 32) * 5 / 9, 1)};
}

}  // namespace nimbry
