// A library needs a source; what counts is what is compiled before it.
