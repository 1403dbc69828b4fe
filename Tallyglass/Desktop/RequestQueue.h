// What the program has asked its user and hasn't had an answer to, one at a time in the order of asking.
// Main thread only.

#pragma once

#include <QObject>
#include <QPointer>
#include <deque>
#include <functional>
#include <utility>

namespace tallyglass {

template <typename Request, typename Answer>
class RequestQueue {
public:
    using Answered = std::function<void(const Answer&)>;

    /// `answered` is called once, unless the receiver has gone by then; it may ask again.
    void add(Request request, QObject* receiver, Answered answered) {
        m_entries.push_back({std::move(request), receiver, std::move(answered)});
    }

    [[nodiscard]] bool isEmpty() const { return m_entries.empty(); }
    /// The one to ask now; without content if there is none.
    [[nodiscard]] Request current() const { return isEmpty() ? Request() : m_entries.front().request; }

    /// Takes the current request away. What it returns passes the answer on. Requires: there is one.
    [[nodiscard]] auto take() {
        return [entry = takeFirst()](const Answer& answer) {
            if (entry.receiver && entry.answered)
                entry.answered(answer);
        };
    }

private:
    struct Entry {
        Request request;
        QPointer<QObject> receiver;
        Answered answered;
    };

    Entry takeFirst() {
        Entry entry = std::move(m_entries.front());
        m_entries.pop_front();
        return entry;
    }

    std::deque<Entry> m_entries;
};

} // namespace tallyglass
