<h1>{!! $title !!}</h1>
@foreach ($groups as $room => $group)
<section id="{!! $room !!}" class="{!! $group['colour'] !!}">
<h2>{{ $group['title'] }}</h2>
@if ($group['note'])<p class="note">{!! $group['note'] !!}</p>@endif
<ul>
@foreach ($group['items'] as $key => $item)
<li id="{!! $room !!}-{!! $key !!}" class="{!! $group['colour'] !!}">
<a href="/{!! $room !!}/{!! $key !!}">{{ $item['name'] }}</a> {!! $item['price'] !!}
@if ($item['new'])<em>new</em>@endif
@if ($item['state'] === 'sold')<s>sold</s>@else<button>buy</button>@endif
</li>
@endforeach
</ul>
</section>
@endforeach
