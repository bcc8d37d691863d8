#pragma once
// COM numbers where the system has none: the file Burnline.ports gives each serial device its number for good.
//
//     ; a line for each port; lines may be added by hand
//     COM7=/dev/serial/by-id/usb-FTDI_FT232R_USB_UART_A50285BI-if00-port0

#include <filesystem>
#include <map>
#include <string>
#include <vector>

class PortTable {
public:
    static constexpr int LastPort = 64;

    explicit PortTable(std::filesystem::path file) : file_(std::move(file)) {}

    /// Reads the file anew; one that isn't there is empty. Lines that say nothing, numbers outside of 1 to 64 and the
    /// second line for a number don't count, but stay in the file. False when the file is there but can't be read;
    /// `Problem` says why.
    bool Load();

    /// The device of a COM number; empty when it has none.
    std::string DeviceOf(int port) const;

    /// The lowest number of a device; 0 when it has none.
    int PortOf(const std::string& device) const;

    /// Gives the lowest free number to each device that has none, and adds the new lines to the file; without new ones
    /// the file isn't touched. Beyond 64 a device stays without. False when the file couldn't be written (it never is
    /// when it couldn't be read): the numbers then hold for this run.
    bool Assign(const std::vector<std::string>& devices);

    /// What went wrong with the file, in words; empty when nothing did.
    const std::string& Problem() const { return problem_; }

private:
    std::filesystem::path file_;
    std::string words_;  // the file as it stands
    std::map<int, std::string> devices_;
    bool readable_ = false;
    std::string problem_;
};
