// libiras_core.so is made of the core's static libraries, linked whole; a
// shared library needs one source of its own, and this is it.
