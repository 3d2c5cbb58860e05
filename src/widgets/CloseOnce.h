#pragma once

/// A window asks its closing question once: after the operator agreed, closing again (its frame's
/// close after its own button, or the whole program quitting) goes through without asking.
class CloseOnce
{
public:
    /// True when the window may close: agreed before, or `ask` agrees now.
    template<typename Ask>
    bool mayClose(Ask ask)
    {
        if (!m_agreed)
            m_agreed = ask();
        return m_agreed;
    }

    bool agreed() const { return m_agreed; }

private:
    bool m_agreed = false;
};
