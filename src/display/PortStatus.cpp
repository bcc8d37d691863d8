#include "display/PortStatus.h"

#include "forms/frmWizard.h"
#include "session/Session.h"
#include "text/Text.h"

void ShowPortStatus(const std::string& words, bool needsAttention, const std::string& toolTip)
{
    Control& label = frmWizard.lblCommPortStatus;
    label.Caption = words;
    label.Bold = needsAttention;
    label.Enlarged = needsAttention;
    label.BackColor = needsAttention ? White : Standard;
    label.ForeColor = Standard;
    label.ToolTipText = toolTip;
    label.Visible = true;
}

void ShowPortAdvice(const std::string& words)
{
    frmWizard.lblRedoCOMMPort.Caption = words;
    frmWizard.lblRedoCOMMPort.Bold = true;
    frmWizard.lblRedoCOMMPort.Visible = true;
}

void HidePortAdvice() { frmWizard.lblRedoCOMMPort.Visible = false; }

void UncheckPort()
{
    const std::string caption = "COM" + text::Num(Session.link.iCommPort);
    for (Control& item : frmWizard.mnuCommPort_Item)
        if (item.Caption() == caption) item.Value = 0;
}
