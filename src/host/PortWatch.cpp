#include "host/PortWatch.h"

void PortWatch::Follow()
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

void PortWatch::Arm()
{
    Follow();
    if (!reader_) return;
    reader_->setEnabled(true);
    writer_->setEnabled(port_.WantsToWrite());
}

void PortWatch::ArmForOutput()
{
    Arm();
    if (reader_) reader_->setEnabled(false);
}
