#include "bench/Report.h"

#include <algorithm>
#include <cstdio>

namespace {

std::string Number(double value, int digits)
{
    char words[64];
    std::snprintf(words, sizeof words, "%.*f", digits, value);
    return words;
}

}  // namespace

void Report::AtLeast(const std::string& what, double value, double limit, const std::string& unit,
                     const std::string& note)
{
    Print(value >= limit, what, Number(value, 2) + " " + unit + ", at least " + Number(limit, 2), note);
}

void Report::AtMost(const std::string& what, double value, double limit, const std::string& unit,
                    const std::string& note)
{
    Print(value <= limit, what, Number(value, 2) + " " + unit + ", at most " + Number(limit, 2), note);
}

void Report::NotMeasured(const std::string& what, const std::string& why) { Print(false, what, "not measured", why); }

void Report::Print(bool ok, const std::string& what, const std::string& figures, const std::string& note)
{
    if (!ok) ++missed_;
    std::printf("%-5s %-40s %-32s %s\n", ok ? "ok" : "OVER", what.c_str(), figures.c_str(), note.c_str());
    std::fflush(stdout);
}

double Quantile(std::vector<double> values, double share)
{
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1) + 0.5)];
}

std::string Spread(const std::vector<double>& values, int digits)
{
    if (values.empty()) return "no run";
    const auto [least, most] = std::minmax_element(values.begin(), values.end());
    return Number(*least, digits) + " to " + Number(*most, digits);
}
