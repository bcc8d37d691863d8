#pragma once
// A failure raised in a slot must not cross the toolkit's event dispatch. It waits here until the dispatch has
// returned, and goes on from there to whoever asked for events.

#include <exception>
#include <utility>

class CaughtFailure {
public:
    /// Runs a slot's body. Of several failures the first one is kept: the others followed from it.
    template <class Body>
    void Run(Body body)
    {
        try {
            body();
        } catch (...) {
            if (!failure_) failure_ = std::current_exception();
        }
    }

    /// Raises what was caught, once.
    void Raise()
    {
        if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
    }

private:
    std::exception_ptr failure_;
};
