// The home of the headers that the tests have precompiled.
