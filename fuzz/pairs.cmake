kavu_add_fuzzer(pairs PairsFuzz.cpp LIBS kavu_conversion)
