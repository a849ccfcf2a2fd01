#pragma once

#include <QtQml/qqml.h>

/// Registers the class corvane::Type of a library without Qt Quick as a QML type of the same name,
/// for the module whose library includes this line. QML binds to instances but cannot create them.
#define CORVANE_QML_TYPE(Type)                                                                     \
    struct Type##QmlType {                                                                         \
        Q_GADGET                                                                                   \
        QML_FOREIGN(corvane::Type)                                                                 \
        QML_NAMED_ELEMENT(Type)                                                                    \
        QML_UNCREATABLE("Created in C++")                                                          \
    };

/// The same for a value type; `name` is its QML name in lower case.
#define CORVANE_QML_VALUE(Type, name)                                                              \
    struct Type##QmlType {                                                                         \
        Q_GADGET                                                                                   \
        QML_FOREIGN(corvane::Type)                                                                 \
        QML_VALUE_TYPE(name)                                                                       \
    };
