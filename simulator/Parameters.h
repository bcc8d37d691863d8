#pragma once
// The parameters that an antenna keeps, and the commands that read and write them.

#include <string>
#include <utility>
#include <vector>

#include "simulator/Fields.h"
#include "simulator/Units.h"

namespace sim {

class Parameters {
public:
    /// An antenna as it was installed: no parameter has its factory value.
    explicit Parameters(const Unit& unit);

    /// Everything back to factory values, as after an erase.
    void Lose();
    /// The same, and the user's satellites, as by CLEAREE.
    void Clear();

    /// Carries out a command: a bare word reads, a word with values writes. Gives the answer without prompt and line
    /// end, empty when it is no command of these. A value that is none is refused and changes nothing.
    std::string Answer(const std::string& command);

    /// Name and value, always in the same order.
    const std::vector<std::pair<std::string, std::string>>& All() const { return values_; }

    /// The value of a parameter, by the name that All gives it; empty when there is none.
    std::string Value(const std::string& name) const;

private:
    void Set(const std::string& name, const std::string& value);
    std::string AnswerGyro(const std::string& word, const std::string& axis, const Fields& fields);
    std::string AnswerCalUp(const Fields& fields);
    bool Has(const std::string& name) const;
    std::string AnswerSatellites(const Fields& fields);
    std::string AnswerUserSatellite(const Fields& fields);
    std::string AnswerSatelliteNumbers(const Fields& fields);
    std::string AnswerHits(const std::string& word, const Fields& fields);
    std::string AnswerPosition(const Fields& fields);
    std::string TellPosition() const;

    Position position_;
    sim::Keeps keeps_;
    std::vector<std::pair<std::string, std::string>> values_;
};

}  // namespace sim
