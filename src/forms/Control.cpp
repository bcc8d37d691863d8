#include "forms/Control.h"

void SelectOption(ControlArray& group, int index)
{
    ClearOptions(group);
    group[index].Value = 1;
    if (group[index].Click) group[index].Click();
}

void ClearOptions(ControlArray& group)
{
    for (Control& option : group) option.Value = 0;
}
