#pragma once
// Forms as data: what a control shows, without a pixel. The core writes the properties; whoever draws the forms looks
// for controls that are marked as changed. What the user does is written into the same properties and then told by
// calling the control's handler.

#include <deque>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Grows with every change of any control, so that one comparison tells whether there is anything to draw.
inline unsigned long FormsRevision = 0;

/// A colour as 0xRRGGBB; Standard is what the desktop's palette gives.
using Color = int;
inline constexpr Color Standard = -1;
inline constexpr Color White = 0xFFFFFF;
inline constexpr Color Red = 0xFF0000;
inline constexpr Color Green = 0x00FF00;
inline constexpr Color Blue = 0x0000FF;
inline constexpr Color PaleYellow = 0xFFFF99;

/// One property: reads like its value; setting it to another value marks the control as changed.
template <class T>
class Property {
public:
    Property(bool& changed, T value) : changed_(changed), value_(std::move(value)) {}
    Property(const Property&) = delete;
    Property& operator=(const Property& other) { return *this = other.value_; }
    Property& operator=(T value)
    {
        if (value_ == value) return *this;
        value_ = std::move(value);
        changed_ = true;
        ++FormsRevision;
        return *this;
    }
    operator const T&() const { return value_; }
    const T& operator()() const { return value_; }

private:
    bool& changed_;
    T value_;
};

struct Control;

/// Keys without a character, by the numbers that the handlers know them by.
inline constexpr int LeftKey = 37, UpKey = 38, RightKey = 39, DownKey = 40, F1Key = 112;

/// A window: its controls in the order of their making. Visible is what the core wants; the desktop follows.
struct Form {
    explicit Form(std::string name, std::string caption) : Name(std::move(name)), Caption(Changed, std::move(caption))
    {
    }
    const std::string Name;
    bool Changed = true;
    std::vector<Control*> Controls;
    Property<std::string> Caption;
    Property<bool> Visible{Changed, false};
    Property<bool> Enabled{Changed, true};
};

/// Any control; each kind uses the properties that it has in every toolkit.
struct Control {
    Control(Form& form, std::string name, std::string caption = {})
        : Name(std::move(name)), Caption(Changed, std::move(caption))
    {
        form.Controls.push_back(this);
    }
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const std::string Name;
    bool Changed = true;

    Property<std::string> Caption;            // labels, buttons, options, menu items, frames
    Property<std::string> Text{Changed, {}};  // text boxes; lines end in CR LF
    Property<bool> Visible{Changed, true};
    Property<bool> Enabled{Changed, true};
    Property<bool> Locked{Changed, false};  // text boxes: shown but not editable
    Property<int> Value{Changed, 0};        // 1 is checked or selected; the progress bar: 0 to 100
    Property<bool> Bold{Changed, false};
    Property<bool> Enlarged{Changed, false};
    Property<Color> BackColor{Changed, Standard};
    Property<Color> ForeColor{Changed, Standard};
    Property<std::string> ToolTipText{Changed, {}};
    Property<std::vector<std::string>> List{Changed, {}};  // combo and list boxes; of a table its rows, the headings
                                                           // first, the cells of a row divided by tabs
    Property<int> ListIndex{Changed, -1};                  // -1: nothing selected
    Property<std::string> Tag{Changed, {}};

    /// Option buttons with the same group exclude each other; the elements of an array are a group unless told
    /// otherwise.
    std::string Group;

    std::function<void()> Click;            // clicked, selected, or an entry chosen
    std::function<bool(int key)> KeyPress;  // a character typed into a text box; true: swallowed
    std::function<bool(int key)> KeyDown;   // a key without a character (UpKey and so on); true: swallowed
    std::function<void()> Change;           // the user changed the text of a box, by keys or by pasting

    /// Chooses an entry by program: a click, as it is for the user.
    void Select(int index)
    {
        ListIndex = index;
        if (Click) Click();
    }
};

/// A control array. The elements are named NAME_0, NAME_1, ...; more can be loaded while the program runs.
struct ControlArray {
    ControlArray(Form& form, std::string name, std::initializer_list<std::string> captions)
        : form_(form), name_(std::move(name))
    {
        for (const std::string& caption : captions) Load(caption);
    }
    Control& operator[](int index) { return elements_.at(static_cast<std::size_t>(index)); }
    int size() const { return static_cast<int>(elements_.size()); }
    /// Adds an element behind the last one.
    Control& Load(std::string caption)
    {
        ++FormsRevision;
        Control& element =
            elements_.emplace_back(form_, name_ + "_" + std::to_string(elements_.size()), std::move(caption));
        element.Group = name_;
        return element;
    }
    auto begin() { return elements_.begin(); }
    auto end() { return elements_.end(); }

private:
    Form& form_;
    std::string name_;
    std::deque<Control> elements_;  // a deque, so that loading one more moves none
};

/// Selects an option, as the user's click would: the others of its group are cleared, its handler runs.
void SelectOption(Form& form, Control& option);
/// Clears all options of a group; no handler runs.
void ClearOptions(ControlArray& group);
