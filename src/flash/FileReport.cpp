#include "flash/FileReport.h"

#include <stdexcept>

#include "platform/ProgramFiles.h"
#include "text/Lines.h"
#include "text/Text.h"

RecordKind KindOf(const std::string& fileName)
{
    return text::Holds(fileName, ".S19") ? RecordKind::S : RecordKind::Hex;
}

FileReport ReportOn(std::string_view bytes, RecordKind kind)
{
    FileReport report;
    RecordFile records(kind);
    Lines lines(bytes);
    try {
        while (!lines.AtEnd())
            if (const auto record = records.Take(lines.Next())) report.map.Add(*record);
        report.fault = records.Fault();
    } catch (const std::invalid_argument& fault) {
        report.fault = "line " + text::Num(lines.Number()) + ": " + fault.what();
    }
    report.oddities = Oddities(records, report.map);
    return report;
}

std::vector<std::string> Oddities(const RecordFile& records, const FileMap& map)
{
    const auto shown = [](std::uint64_t address) { return text::Hex(static_cast<std::uint32_t>(address), 4); };
    std::vector<std::string> odd = records.Oddities();
    if (map.Contradiction())
        odd.push_back("it gives address " + shown(*map.Contradiction()) +
                      " two different contents; the later one counts");
    if (map.StepBack()) odd.push_back("its records go backward, first to address " + shown(*map.StepBack()));
    return odd;
}

std::string RevisionBefore(const std::string& fileName)
{
    const auto older = [](const std::string& a, const std::string& b) {
        return a.size() != b.size() ? a.size() < b.size() : text::Compare(a, b) < 0;
    };
    const std::string own = PathOf(fileName).filename().string();
    std::string before;
    for (const std::string& file : FamilyFiles(own))
        if (older(file, own) && (before.empty() || older(before, file))) before = file;
    return before;
}
