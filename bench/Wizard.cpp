#include "bench/Wizard.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcessEnvironment>
#include <QTextStream>
#include <algorithm>
#include <cstdint>

namespace {

double peakMemory = 0;

void WriteFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s can't be written", qPrintable(path));
}

QByteArray HexRecord(std::uint32_t address, int type, const QByteArray& data)
{
    QByteArray record;
    record += static_cast<char>(data.size());
    record += static_cast<char>(address >> 8 & 0xFF);
    record += static_cast<char>(address & 0xFF);
    record += static_cast<char>(type);
    record += data;
    unsigned sum = 0;
    for (const char byte : record) sum += static_cast<unsigned char>(byte);
    record += static_cast<char>(-sum & 0xFF);
    return ':' + record.toHex().toUpper() + "\r\n";
}

QByteArray SRecord(char type, std::uint32_t address, int addressBytes, const QByteArray& data)
{
    QByteArray record;
    record += static_cast<char>(addressBytes + data.size() + 1);
    for (int shift = 8 * (addressBytes - 1); shift >= 0; shift -= 8)
        record += static_cast<char>(address >> shift & 0xFF);
    record += data;
    unsigned sum = 0;
    for (const char byte : record) sum += static_cast<unsigned char>(byte);
    record += static_cast<char>(255 - (sum & 0xFF));
    return QByteArray("S") + type + record.toHex().toUpper() + "\r\n";
}

/// Bytes that look like a program's, always the same.
class Bytes {
public:
    QByteArray Next(int count)
    {
        QByteArray data;
        for (int i = 0; i < count; ++i) {
            state_ = state_ * 1664525U + 1013904223U;
            data += static_cast<char>(state_ >> 24);
        }
        return data;
    }

private:
    std::uint32_t state_ = 1;
};

}  // namespace

Home::Home(const std::string& device, int baud, bool fast)
{
    WriteFile(Path(u"Burnline.ini"_qs), "[BurnlineParameters]\r\nCOMMPort=7\r\nBaudRate=" + QByteArray::number(baud) +
                                            "\r\nTransmitDelay=1\r\nAutoCheckForUpdates=False\r\nUseFastBaud=" +
                                            (fast ? "True" : "False") + "\r\n");
    if (!device.empty()) WriteFile(Path(u"Burnline.ports"_qs), "COM7=" + QByteArray::fromStdString(device) + "\n");
}

int Home::MakeHexFile(const QString& name, int kilobytes) const
{
    constexpr int recordLength = 32;
    constexpr std::uint32_t segment = 0x10000;
    QByteArray words;
    int lines = 1;
    Bytes bytes;
    for (std::uint32_t address = 0; address < static_cast<std::uint32_t>(kilobytes) * 1024; address += recordLength) {
        if (address > 0 && address % segment == 0) {
            const char upper[] = {0, static_cast<char>(address >> 16)};
            words += HexRecord(0, 4, QByteArray(upper, 2));
            ++lines;
        }
        words += HexRecord(address % segment, 0, bytes.Next(recordLength));
        ++lines;
    }
    WriteFile(Path(name), words + HexRecord(0, 1, {}));
    return lines;
}

int Home::MakeS19File(const QString& name, int kilobytes, std::uint32_t address) const
{
    constexpr int recordLength = 32;
    Bytes bytes;
    QByteArray words = SRecord('0', 0, 2, "BENCH");
    int lines = 2;
    const std::uint32_t end = address + static_cast<std::uint32_t>(kilobytes) * 1024;
    for (; address < end; address += recordLength, ++lines) words += SRecord('2', address, 3, bytes.Next(recordLength));
    WriteFile(Path(name), words + SRecord('8', 0, 3, {}));
    return lines;
}

void Prepare(QProcess& process, const Home& home, const QString& program, const QStringList& arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"BURNLINE_HOME"_qs, home.Path());
    environment.insert(u"QT_QPA_PLATFORM"_qs, u"offscreen"_qs);
    environment.insert(u"QT_LOGGING_RULES"_qs, u"*.warning=false"_qs);  // what the offscreen platform can't do
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setProgram(QCoreApplication::applicationDirPath() + u'/' + program);
    process.setArguments(arguments);
}

std::map<std::string, double> RunTask(const Home& home, const QString& task, int seconds)
{
    QProcess process;
    Prepare(process, home, u"burnline-bench"_qs, {u"--wizard"_qs, task});
    process.start(QIODevice::ReadOnly);
    if (!process.waitForFinished(seconds * 1000)) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    std::map<std::string, double> figures;
    QTextStream words(process.readAllStandardOutput());
    QString name;
    for (double value = 0; words >> name >> value, words.status() == QTextStream::Ok && !name.isEmpty();)
        figures[name.toStdString()] = value;
    peakMemory = std::max(peakMemory, figures["memory"]);
    return figures;
}

double PeakMemory() { return peakMemory; }
