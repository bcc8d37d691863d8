#include "forms/Control.h"

void SelectOption(Form& form, Control& option)
{
    for (Control* other : form.Controls)
        if (other != &option && !option.Group.empty() && other->Group == option.Group) other->Value = 0;
    option.Value = 1;
    if (option.Click) option.Click();
}

void ClearOptions(ControlArray& group)
{
    for (Control& option : group) option.Value = 0;
}
