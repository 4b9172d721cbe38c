kavu_add_fuzzer(stream StreamFuzz.cpp LIBS kavu_pcm)
