#include "console/Voice.h"

#include <QJsonDocument>
#include <cmath>
#include <cstdio>

#include "platform/Terminal.h"

namespace {

constexpr qint64 terminalApartMs = 100, jsonApartMs = 500, plainApartMs = 10000;
constexpr int plainApartPercent = 10;

std::string Fixed(double number, int digits) { return QString::number(number, 'f', digits).toStdString(); }

std::string Clock(double seconds)
{
    const auto whole = std::lround(seconds);
    const std::string rest = std::to_string(whole % 60);
    return std::to_string(whole / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
}

std::string WordsOf(const Progress& now)
{
    std::string words = now.what + " " + std::to_string(now.percent) + " %";
    if (now.bytes >= 0) words += ", " + std::to_string(now.bytes) + " bytes";
    if (now.rate >= 0) words += ", " + Fixed(now.rate, 0) + " bytes/s";
    if (now.lineShare >= 0) words += " (" + Fixed(now.lineShare, 0) + " % of the line)";
    if (now.seconds >= 0) words += ", " + Clock(now.seconds) + " so far";
    if (now.secondsLeft >= 0) words += ", " + Clock(now.secondsLeft) + " left";
    return words;
}

QJsonObject FieldsOf(const Progress& now)
{
    QJsonObject fields{{"event", "progress"}, {"what", QString::fromStdString(now.what)}, {"percent", now.percent}};
    const struct {
        const char* name;
        double value;
    } known[] = {{"bytes", static_cast<double>(now.bytes)},
                 {"bytesPerSecond", now.rate},
                 {"percentOfLine", now.lineShare},
                 {"seconds", now.seconds},
                 {"secondsLeft", now.secondsLeft}};
    for (const auto& [name, value] : known)
        if (value >= 0) fields[name] = std::round(value * 10) / 10;
    return fields;
}

std::string Line(const QJsonObject& fields)
{
    return QJsonDocument(fields).toJson(QJsonDocument::Compact).toStdString() + "\n";
}

/// The system's texts end their lines in CR LF or LF.
std::string Lines(const std::string& words)
{
    QString lines = QString::fromStdString(words);
    lines.remove(u'\r');
    while (lines.startsWith(u'\n')) lines.remove(0, 1);
    while (lines.endsWith(u'\n')) lines.chop(1);
    return lines.toStdString();
}

}  // namespace

void Voice::Print(std::FILE* stream, const std::string& words)
{
    ClearLine();
    if (stream == stderr) std::fflush(stdout);
    std::fwrite(words.data(), 1, words.size(), stream);
    std::fflush(stream);
}

void Voice::ClearLine()
{
    if (line_.empty()) return;
    std::fputs("\r\033[K", stdout);
    line_.clear();
}

void Voice::Tell(const char* event, const std::string& words, QJsonObject fields)
{
    const std::string lines = Lines(words);
    if (style_ != Style::Json) {
        if (!lines.empty()) Print(stdout, lines + "\n");
        return;
    }
    fields["event"] = event;
    if (!lines.empty()) fields["words"] = QString::fromStdString(lines);
    Print(stdout, Line(fields));
}

void Voice::Complain(const char* event, const std::string& words, QJsonObject fields)
{
    if (style_ == Style::Json) return Tell(event, words, std::move(fields));
    Print(stderr, Lines(words) + "\n");
}

void Voice::Ask(const std::string& words, QJsonObject fields)
{
    if (style_ == Style::Json) return Tell("question", words, std::move(fields));
    Print(stdout, words + " ");
}

void Voice::EndLine()
{
    if (style_ != Style::Json) Print(stdout, "\n");
}

void Voice::Show(const Progress& progress)
{
    const qint64 apart = style_ == Style::Terminal ? terminalApartMs
                         : style_ == Style::Json   ? jsonApartMs
                                                   : plainApartMs;
    const bool other = progress.what != last_.what || progress.percent < last_.percent;
    const bool far = progress.percent >= last_.percent + plainApartPercent && style_ == Style::Plain;
    const bool end = progress.percent == 100 && last_.percent != 100;
    if (sinceShown_.isValid() && !other && !far && !end && sinceShown_.elapsed() < apart) return;
    sinceShown_.start();
    last_ = progress;
    if (style_ == Style::Json) return Print(stdout, Line(FieldsOf(progress)));
    if (style_ == Style::Plain) return Print(stdout, WordsOf(progress) + "\n");
    const std::string words = WordsOf(progress).substr(0, static_cast<std::size_t>(std::max(TerminalWidth() - 1, 1)));
    std::fputs(("\r" + words + "\033[K").c_str(), stdout);
    std::fflush(stdout);
    line_ = words;
}

/// What stood there last stays, as a line among the others.
void Voice::EndProgress()
{
    if (!line_.empty()) std::fputs("\n", stdout);
    std::fflush(stdout);
    line_.clear();
    sinceShown_.invalidate();
    last_ = {};
}
