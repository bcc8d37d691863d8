#include <QSocketNotifier>

#include "host/SerialLink.h"
#include "platform/posix/PosixSerialControl.h"

namespace {

class PosixSerialLink : public SerialLink {
public:
    explicit PosixSerialLink(std::function<std::string(int)> deviceOf) : port_(std::move(deviceOf)) {}

    SerialControl& Control() override { return port_; }
    int TestPort(int port) override { return port_.TestPort(port); }
    void Arm() override;
    void ArmForOutput() override;

private:
    void Follow();

    PosixSerialControl port_;
    int descriptor_ = -1;
    std::unique_ptr<QSocketNotifier> reader_, writer_;
};

void PosixSerialLink::Follow()
{
    if (port_.Descriptor() == descriptor_) return;
    descriptor_ = port_.Descriptor();
    reader_.reset();
    writer_.reset();
    if (descriptor_ < 0) return;
    reader_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    writer_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Write);
    QObject::connect(reader_.get(), &QSocketNotifier::activated, reader_.get(), [this] { reader_->setEnabled(false); });
    QObject::connect(writer_.get(), &QSocketNotifier::activated, writer_.get(), [this] {
        port_.FlushOutput();
        writer_->setEnabled(port_.WantsToWrite());
    });
}

void PosixSerialLink::Arm()
{
    Follow();
    if (!reader_) return;
    reader_->setEnabled(true);
    writer_->setEnabled(port_.WantsToWrite());
}

void PosixSerialLink::ArmForOutput()
{
    Arm();
    if (reader_) reader_->setEnabled(false);
}

}  // namespace

std::unique_ptr<SerialLink> MakeSerialLink(std::function<std::string(int)> deviceOf)
{
    return std::make_unique<PosixSerialLink>(std::move(deviceOf));
}
