kavu_add_fuzzer(profile ProfileFuzz.cpp LIBS kavu_core)
kavu_add_fuzzer(keyvalue KeyValueFuzz.cpp LIBS kavu_core)
