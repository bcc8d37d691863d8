#include "simulator/Fields.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <sstream>

namespace sim {

std::string Upper(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

std::string Trim(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

Fields Split(const std::string& text)
{
    Fields fields;
    std::istringstream in(text);
    for (std::string field; std::getline(in, field, ',');) fields.push_back(Trim(field));
    if (!text.empty() && text.back() == ',') fields.emplace_back();
    return fields;
}

std::optional<double> Number(const std::string& text)
{
    if (text.empty() || text.find_first_not_of("+-.0123456789") != std::string::npos) return std::nullopt;
    std::istringstream in(text);
    double value = 0;
    if (!(in >> value) || in.peek() != std::istringstream::traits_type::eof()) return std::nullopt;
    return value;
}

std::string Tenths(double value)
{
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.1f", value);
    return text.data();
}

std::string Refusal(const std::string& word) { return word + ": ILLEGAL VALUE"; }

}  // namespace sim
