#pragma once
// The figures beside their limits, one line each.

#include <string>
#include <vector>

class Report {
public:
    /// `note` says how the figure came about: runs, spread.
    void AtLeast(const std::string& what, double value, double limit, const std::string& unit, const std::string& note);
    void AtMost(const std::string& what, double value, double limit, const std::string& unit, const std::string& note);

    /// A figure that couldn't be measured is missed.
    void NotMeasured(const std::string& what, const std::string& why);

    int Missed() const { return missed_; }

private:
    void Print(bool ok, const std::string& what, const std::string& figures, const std::string& note);

    int missed_ = 0;
};

/// The value below which `share` (0 to 1) of the values lie; 0 without any.
double Quantile(std::vector<double> values, double share);

/// "0.21 to 0.25", each value with `digits` decimals.
std::string Spread(const std::vector<double>& values, int digits);
