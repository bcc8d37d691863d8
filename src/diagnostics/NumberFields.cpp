// The boxes that take a number say at once when what stands in them is none. What is sent stays what the user wrote.

#include <string>

#include "diagnostics/Rooms.h"
#include "forms/frmWizard.h"
#include "text/Text.h"

namespace {

void Watch(Control& box, const std::string& expected)
{
    box.Change = [&box, expected] {
        const bool isFine = box.Text().empty() || text::IsNumeric(box.Text());
        box.BackColor = isFine ? Standard : PaleYellow;
        box.ToolTipText = isFine ? "" : "This is no number. " + expected;
    };
}

}  // namespace

void ConnectNumberFields()
{
    Watch(frmWizard.txtLat, "Enter the latitude in degrees, such as 42.5.");
    Watch(frmWizard.txtLongitude[0], "Enter the longitude in degrees, such as 71.25.");
    Watch(frmWizard.txtLongitude[1], "Enter the satellite's longitude in degrees, such as 61.5.");
    Watch(frmWizard.txtSatLongitude, "Enter the satellite's longitude in degrees, such as 19.2.");
    Watch(frmWizard.txtAZ, "Enter the azimuth in degrees, such as 180.5.");
    Watch(frmWizard.txtEl, "Enter the elevation in degrees, such as 45.5.");
}
