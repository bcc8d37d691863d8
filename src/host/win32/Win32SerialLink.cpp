#include <QWinEventNotifier>

#include "host/SerialLink.h"
#include "platform/win32/Win32SerialControl.h"

namespace {

class Win32SerialLink : public SerialLink {
public:
    explicit Win32SerialLink(std::function<std::string(int)> deviceOf) : port_(std::move(deviceOf))
    {
        reader_.setHandle(port_.ReadEvent());
        writer_.setHandle(port_.WriteEvent());
        // To have been told is enough: the round that follows serves the port.
        QObject::connect(&reader_, &QWinEventNotifier::activated, [this] { reader_.setEnabled(false); });
        QObject::connect(&writer_, &QWinEventNotifier::activated, [this] {
            writer_.setEnabled(false);
            port_.Serve();
        });
    }

    SerialControl& Control() override { return port_; }
    int TestPort(int port) override { return port_.TestPort(port); }

    void Arm() override
    {
        ArmForOutput();
        reader_.setEnabled(port_.HasDevice());
    }

    void ArmForOutput() override
    {
        reader_.setEnabled(false);
        writer_.setEnabled(port_.HasDevice() && port_.WantsToWrite());
    }

private:
    Win32SerialControl port_;
    QWinEventNotifier reader_, writer_;
};

}  // namespace

std::unique_ptr<SerialLink> MakeSerialLink(std::function<std::string(int)> deviceOf)
{
    return std::make_unique<Win32SerialLink>(std::move(deviceOf));
}
