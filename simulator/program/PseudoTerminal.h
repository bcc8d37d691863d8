#pragma once
// A pseudo-terminal that stands for the antenna's serial port.

#include <cstddef>
#include <string>

class PseudoTerminal {
public:
    /// `link` is a path that is to lead to the port; empty for none. `baud` is its speed until a program sets another.
    PseudoTerminal(std::string link, int baud) : link_(std::move(link)), baud_(baud) {}
    ~PseudoTerminal() { Remove(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    /// Makes port and link; raises std::runtime_error when that fails. A file at the link's place that is no link
    /// stays, and is such a failure.
    void Make();
    /// Takes both away: for a program that has the port open this is a cable pulled.
    void Remove();
    bool IsThere() const { return master_ >= 0; }

    /// The device, "/dev/pts/3".
    const std::string& Path() const { return path_; }

    /// To poll for input: what the program wrote, and programs that open or close the port; -1 when there is none.
    int Descriptor() const { return master_; }
    int UsersDescriptor() const { return watch_; }

    /// What the program wrote, as far as it is there.
    std::string Read();
    /// Never blocks, and gives how many bytes it has taken. Without a program at the port all are gone, as on a real
    /// line.
    std::size_t Write(const std::string& bytes);
    /// The speed that the program has set; both ends share it.
    int Baud() const;
    /// False when no program has the port open, as far as the system tells.
    bool HasUsers() const { return watch_ < 0 || users_ > 0; }
    /// Notes who opened or closed the port; to be called when UsersDescriptor is readable.
    void NoteUsers();

private:
    void MakeLink() const;
    void WatchUsers();

    std::string link_;
    int baud_;
    std::string path_;
    int master_ = -1;
    int held_ = -1;   // the program's side, kept open: otherwise its settings and its end would be ours to guess
    int watch_ = -1;  // inotify; -1 where the system can't tell
    int users_ = 0;
};
