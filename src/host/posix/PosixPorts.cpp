#include <QElapsedTimer>
#include <QSerialPortInfo>
#include <QStringList>
#include <filesystem>
#include <optional>

#include "host/Ports.h"
#include "platform/PortTable.h"
#include "platform/posix/PosixMachine.h"
#include "platform/posix/PosixSerialControl.h"

namespace fs = std::filesystem;

namespace {

constexpr qint64 lookEveryMs = 1000;

/// The name that an adapter keeps in whichever socket it is plugged, where it has one.
std::string LastingName(const std::string& device)
{
    std::error_code ignored;
    const fs::path real = fs::canonical(device, ignored);
    for (const fs::directory_entry& entry : fs::directory_iterator("/dev/serial/by-id", ignored))
        if (fs::canonical(entry.path(), ignored) == real) return entry.path().string();
    return device;
}

std::optional<QSerialPortInfo> InfoOf(const std::string& device)
{
    std::error_code ignored;
    const fs::path real = fs::canonical(device, ignored);
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts())
        if (fs::canonical(info.systemLocation().toStdString(), ignored) == real) return info;
    return std::nullopt;
}

QString Hex4(quint16 number) { return QString::number(number, 16).rightJustified(4, u'0'); }

std::string ToolTip(const std::string& device)
{
    QStringList words{QString::fromStdString(device)};
    if (const auto info = InfoOf(device)) {
        if (info->systemLocation() != words.front()) words << info->systemLocation();
        if (!info->description().isEmpty()) words << info->description();
        if (!info->manufacturer().isEmpty()) words << info->manufacturer();
        if (info->hasVendorIdentifier() && info->hasProductIdentifier())
            words << u"USB "_qs + Hex4(info->vendorIdentifier()) + u':' + Hex4(info->productIdentifier());
    }
    return words.join(u", "_qs).toStdString();
}

std::string Remedy(const std::string& device)
{
    const std::string group = OwningGroup(device);
    return "You may not open " + device + ". It belongs to the group \"" + group +
           "\". Join that group with \"sudo usermod -aG " + group + " $USER\", then log out and in again.";
}

class PosixPorts : public Ports {
public:
    explicit PosixPorts(const std::string& directory) : table_(fs::path(directory) / "Burnline.ports") {}

    std::string DeviceOf(int port) override;
    int PortOf(const std::string& device) override;
    PortInfo Describe(int port) override;

private:
    void Refresh();

    PortTable table_;
    QElapsedTimer sinceLook_;
};

/// Looks at the machine again when the last look is more than a second old, so that an adapter plugged in meanwhile is
/// there.
void PosixPorts::Refresh()
{
    if (sinceLook_.isValid() && sinceLook_.elapsed() < lookEveryMs) return;
    table_.Load();
    std::vector<std::string> devices;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts())
        devices.push_back(LastingName(info.systemLocation().toStdString()));
    table_.Assign(devices);
    sinceLook_.start();
}

std::string PosixPorts::DeviceOf(int port)
{
    Refresh();
    return table_.DeviceOf(port);
}

int PosixPorts::PortOf(const std::string& device)
{
    Refresh();
    std::error_code ignored;
    for (int port = 1; port <= LastCommPort; ++port) {
        const std::string known = table_.DeviceOf(port);
        if (!known.empty() && (known == device || fs::equivalent(known, device, ignored))) return port;
    }
    if (!fs::exists(device, ignored)) return 0;
    const std::string name = LastingName(fs::absolute(device, ignored).string());
    table_.Assign({name});
    return table_.PortOf(name);
}

PortInfo PosixPorts::Describe(int port)
{
    const std::string device = DeviceOf(port);
    if (device.empty()) return {};
    PortInfo info{ToolTip(device), {}};
    if (TestDevice(device) == PORT_FORBIDDEN) info.remedy = Remedy(device);
    return info;
}

}  // namespace

std::unique_ptr<Ports> MakePorts(const std::string& directory) { return std::make_unique<PosixPorts>(directory); }
