#pragma once

// The three static operations of a process-wide registry, defined in the class's source:
//     InitInstance()    creates the instance unless one exists;
//     GetInstance()     returns it, or null;
//     ReleaseInstance() deletes it; GetInstance() reads null from the moment deletion begins.
// The instance pointer is a file-local variable named s_instance, so that the class's own
// static operations can reach the instance too.
#define OV_DEFINE_SINGLETON(Class)                                                                           \
    namespace {                                                                                              \
    Class* s_instance = nullptr;                                                                             \
    }                                                                                                        \
    void Class::InitInstance()                                                                               \
    {                                                                                                        \
        if (!s_instance)                                                                                     \
            s_instance = new Class();                                                                        \
    }                                                                                                        \
    Class* Class::GetInstance()                                                                              \
    {                                                                                                        \
        return s_instance;                                                                                   \
    }                                                                                                        \
    void Class::ReleaseInstance()                                                                            \
    {                                                                                                        \
        Class* instance = s_instance;                                                                        \
        s_instance = nullptr;                                                                                \
        delete instance;                                                                                     \
    }
