#pragma once

#include <QtCore/QObject>

/// What the library's objects are measured against: a property and a method found through Qt's
/// meta-object, and a signal.
class QtPeer : public QObject {
    Q_OBJECT
    Q_PROPERTY(double width READ width WRITE setWidth)

public:
    double width() const { return width_; }
    void setWidth(double width) { width_ = width; }
    Q_INVOKABLE double grow(double by) { return width_ += by; }

signals:
    void changed(int value);

private:
    double width_ = 1;
};
