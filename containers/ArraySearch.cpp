#include "containers/ArrayData.h"
#include "foundation/AtomicCount.h"

#include <functional>
#include <utility>

namespace KrCore {

/// Looks within an array for the place that an array is to be stored to: an element, or the array
/// in one. It goes from level to level instead of calling itself, as arrays may be nested deeply.
class Array::Search {
public:
    Search(const Array& array, const void* place) : place_(place) { first_.array = &array; }
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;
    ~Search();

    bool find();
    /// A copy of the array that shares nothing of what leads to the place found.
    Array copyApart();

private:
    /// An array within the one that is searched.
    struct Step : Heap {
        const Array* array = nullptr;
        Step* outer = nullptr;  ///< The array it is an element of,
        unsigned int index = 0; ///< under this index.
        Step* inner = nullptr;  ///< The next one on the way to the place found.
        Step* next = nullptr;   ///< The next one to be looked at.
    };

    bool isDenseElement(const Data& data) const;
    bool mayLeadThere(const Data& data) const { return data.hasLent() || isDenseElement(data); }
    void lookInto(Step& step);
    void add(const Array& array, Step& outer, unsigned int index);

    const void* place_;
    Step first_;
    Step* last_ = &first_;
    Step* found_ = nullptr;
};

Array::Search::~Search() {
    while (first_.next) {
        delete std::exchange(first_.next, first_.next->next);
    }
}

bool Array::Search::find() {
    for (Step* step = &first_; step && !found_; step = step->next) {
        lookInto(*step);
    }
    return found_ != nullptr;
}

bool Array::Search::isDenseElement(const Data& data) const {
    const unsigned int used = data.used();
    if (used == 0) return false;
    const void* first = data.dense->slots();
    const void* end = data.dense->slots() + used;
    return std::less_equal<>()(first, place_) && std::less<>()(place_, end);
}

void Array::Search::lookInto(Step& step) {
    const Data& data = *step.array->data_;
    if (isDenseElement(data)) found_ = &step;
    if (found_ || !data.hasLent()) return;
    data.visitElements([&](unsigned int index, const Variant& element) {
        const Array* nested = element.getArray();
        if (&element == place_ || (nested && nested == place_)) {
            found_ = &step;
        } else if (nested && mayLeadThere(*nested->data_)) {
            add(*nested, step, index);
        }
    });
}

void Array::Search::add(const Array& array, Step& outer, unsigned int index) {
    auto* step = new Step;
    step->array = &array;
    step->outer = &outer;
    step->index = index;
    last_->next = step;
    last_ = step;
}

Array Array::Search::copyApart() {
    for (Step* step = found_; step->outer; step = step->outer) {
        step->outer->inner = step;
    }
    Array copy = first_.array->share();
    copy.makeUnique();
    Array* array = &copy;
    for (const Step* step = first_.inner; step; step = step->inner) {
        array = array->data_->find(step->index)->getArray();
        array->makeUnique();
        step->array->data_->setLent(true); // Nothing on the way is shared any more.
    }
    return copy;
}

Array Array::share() const {
    Array copy;
    if (data_ != &Data::empty) countUp(data_->refCount);
    copy.data_ = data_;
    return copy;
}

bool Array::holds(const void* place) const { return Search(*this, place).find(); }

Array Array::copyFor(const void* place) const {
    Search search(*this, place);
    return search.find() ? search.copyApart() : *this;
}

} // namespace KrCore
