"""The texts of the sample documents, made from one description of a flight test."""
