<!DOCTYPE html>
<html lang="{!! $lang !!}">
<head>
<meta charset="utf-8">
<title>{{ $title }} - {{ $shop }}</title>
<meta name="viewport" content="width=device-width, initial-scale=1">
<link rel="stylesheet" href="{!! $assets !!}/shop.css">
<script src="{!! $assets !!}/shop.js" defer></script>
</head>
<body>
<header>
<a class="logo" href="/">{{ $shop }}</a>
<form action="/search" role="search"><input type="search" name="q" aria-label="Search"><button>Search</button></form>
<p class="account">Hello {{ $user }} · <a href="/cart">{!! $cart !!} items, {!! $sum !!} EUR</a></p>
<nav><ul>
@foreach ($menu as $item)
<li><a href="{!! $item['url'] !!}">{{ $item['title'] }}</a></li>
@endforeach
</ul></nav>
</header>
