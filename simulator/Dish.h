#pragma once
// Where the antenna looks, and what moves it.

#include <string>

namespace sim {

class Dish {
public:
    /// The software has started: the antenna looks for its satellite and follows it.
    void Start();

    /// HALT, STATE, GOTO,AZ180,EL45.5 and the steps "8" up, "2" down, "4" left, "6" right. Gives the answer without
    /// prompt and line end, empty when it is no command of these. A position out of reach is refused.
    std::string Answer(const std::string& command);

    /// "AZ 180.0 EL 45.0", in degrees.
    std::string Position() const;

private:
    std::string GoTo(const std::string& command);
    std::string Step(char key);

    bool follows_ = true;
    double azimuth_ = 180, elevation_ = 45;
};

}  // namespace sim
