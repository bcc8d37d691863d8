#include <windows.h>
// The other one needs it ahead.
#include <setupapi.h>

#include <cctype>
#include <map>

#include "host/Ports.h"
#include "text/Text.h"

namespace {

std::string Narrow(const wchar_t* words)
{
    const int length = WideCharToMultiByte(CP_UTF8, 0, words, -1, nullptr, 0, nullptr, nullptr);
    if (length <= 1) return {};
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, words, -1, narrow.data(), length, nullptr, nullptr);
    narrow.pop_back();
    return narrow;
}

/// Driver's device by port name: "\Device\Serial0" by "COM1".
std::map<std::string, std::string> DevicesInUse()
{
    std::map<std::string, std::string> devices;
    HKEY list = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"HARDWARE\\DEVICEMAP\\SERIALCOMM", 0, KEY_READ, &list) != ERROR_SUCCESS)
        return devices;
    for (DWORD index = 0;; ++index) {
        wchar_t name[256] = {}, value[256] = {};
        DWORD nameLength = 256, bytes = sizeof value - sizeof(wchar_t), kind = 0;
        if (RegEnumValueW(list, index, name, &nameLength, nullptr, &kind, reinterpret_cast<BYTE*>(value), &bytes) !=
            ERROR_SUCCESS)
            break;
        if (kind == REG_SZ) devices[text::Upper(Narrow(value))] = Narrow(name);
    }
    RegCloseKey(list);
    return devices;
}

std::string PropertyOf(HDEVINFO list, SP_DEVINFO_DATA& device, DWORD property)
{
    wchar_t words[256] = {};
    if (!SetupDiGetDeviceRegistryPropertyW(list, &device, property, nullptr, reinterpret_cast<BYTE*>(words),
                                           sizeof words - sizeof(wchar_t), nullptr))
        return {};
    return Narrow(words);
}

std::string PortNameOf(HDEVINFO list, SP_DEVINFO_DATA& device)
{
    const HKEY key = SetupDiOpenDevRegKey(list, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_READ);
    if (key == INVALID_HANDLE_VALUE) return {};
    wchar_t words[64] = {};
    DWORD bytes = sizeof words - sizeof(wchar_t);
    const bool told =
        RegQueryValueExW(key, L"PortName", nullptr, nullptr, reinterpret_cast<BYTE*>(words), &bytes) == ERROR_SUCCESS;
    RegCloseKey(key);
    return told ? Narrow(words) : "";
}

/// What the device manager calls a port, and which hardware it is ("USB\VID_0403&PID_6001").
std::string FriendlyName(const std::string& port)
{
    static const GUID ports = {0x4d36e978, 0xe325, 0x11ce, {0xbf, 0xc1, 0x08, 0x00, 0x2b, 0xe1, 0x03, 0x18}};
    const HDEVINFO list = SetupDiGetClassDevsW(&ports, nullptr, nullptr, DIGCF_PRESENT);
    if (list == INVALID_HANDLE_VALUE) return {};
    std::string name;
    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof device;
    for (DWORD index = 0; name.empty() && SetupDiEnumDeviceInfo(list, index, &device); ++index) {
        if (!text::Equal(PortNameOf(list, device), port)) continue;
        name = PropertyOf(list, device, SPDRP_FRIENDLYNAME);
        const std::string hardware = PropertyOf(list, device, SPDRP_HARDWAREID);
        if (!hardware.empty()) name += (name.empty() ? "" : ", ") + hardware;
    }
    SetupDiDestroyDeviceInfoList(list);
    return name;
}

class Win32Ports : public Ports {
public:
    /// COM numbers are the system's own here. Ports above 9 need the long form, and the others bear it.
    std::string DeviceOf(int port) override { return "\\\\.\\COM" + text::Num(port); }

    int PortOf(const std::string& device) override
    {
        const std::string name = text::StartsWith(device, "\\\\.\\") ? device.substr(4) : device;
        if (!text::StartsWith(name, "COM")) return 0;
        const int port = static_cast<int>(text::Val(name.substr(3)));
        return port >= 1 && port <= LastCommPort ? port : 0;
    }

    PortInfo Describe(int port) override
    {
        const std::string name = "COM" + text::Num(port);
        const auto devices = DevicesInUse();
        const auto found = devices.find(name);
        std::string words = FriendlyName(name);
        if (words.empty()) words = name;
        if (found != devices.end()) words += ", " + found->second;
        return {words, {}};
    }
};

}  // namespace

std::unique_ptr<Ports> MakePorts(const std::string&) { return std::make_unique<Win32Ports>(); }
