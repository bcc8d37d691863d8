#include "tests/desktop/AntennaProcess.h"

#include <QElapsedTimer>
#include <sstream>
#include <stdexcept>

#include "tests/desktop/ProgramHome.h"

AntennaProcess::AntennaProcess(int board, const std::filesystem::path& link, bool fast, const std::string& unit,
                               bool usb, bool quick)
{
    QStringList arguments{"--board", QString::number(board), "--link", QString::fromStdString(link.string())};
    if (fast) arguments << "--fast";
    if (usb) arguments << "--usb";
    if (quick) arguments << "--quick";
    if (!unit.empty()) arguments << "--unit" << QString::fromStdString(unit);
    child_.Start(ANTENNA_PROGRAM, arguments);
    WaitFor("the software runs");
}

void AntennaProcess::WaitFor(const std::string& words, double seconds)
{
    QElapsedTimer waited;
    waited.start();
    const int limit = static_cast<int>(seconds * 1000);
    while (const auto line = child_.ReadLine(limit - static_cast<int>(waited.elapsed()))) {
        said_.push_back(*line);
        if (line->find(words) != std::string::npos) return;
    }
    const std::string last = said_.empty() ? "nothing" : said_.back();
    throw std::runtime_error("the antenna didn't say \"" + words + "\", but at last: " + last);
}

std::string AntennaProcess::PowerCommand()
{
    const std::string input = "/proc/" + std::to_string(child_.Process().processId()) + "/fd/0";
    return "printf 'power off\\npower on\\n' >" + input;
}

std::string AntennaProcess::Heard()
{
    const std::string words = "heard:";
    Do("heard");
    WaitFor(words);
    const std::string heard = said_.back().substr(said_.back().find(words) + words.size());
    return heard.empty() ? heard : heard.substr(1);
}

AntennaProcess::Holdings AntennaProcess::Dump(const std::filesystem::path& directory)
{
    Do("dump " + directory.string());
    WaitFor("dumped");
    Holdings holdings{ReadAll(directory / "memory.bin"), {}};
    std::istringstream lines(ReadAll(directory / "parameters.txt"));
    for (std::string line; std::getline(lines, line);) {
        const std::size_t equals = line.find('=');
        holdings.parameters[line.substr(0, equals)] = line.substr(equals + 1);
    }
    return holdings;
}
