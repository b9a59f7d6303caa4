// Placeholder: replaced by the implementation.
